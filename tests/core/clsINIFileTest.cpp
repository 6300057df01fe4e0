#include "core/clsINIFile.h"

#include "core/TextFile.h"
#include "support/FullDisk.h"
#include "support/WithoutRootRights.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

const QString kKey = QStringLiteral("Key");

class clsINIFileTest : public testing::Test {
protected:
    clsINIFileTest() {
        ini_.SetFile(path_);
        ini_.SetSection(QStringLiteral("A"));
    }
    void Put(const QByteArray &bytes) { WriteFile(path_, bytes); }
    QByteArray Bytes() const { return QFile::exists(path_) ? ReadFile(path_) : QByteArray("(no file)"); }
    QString Value(const char *key, const char *defaultValue = "") const {
        return ini_.GetValue(QString::fromLatin1(key), QString::fromUtf8(defaultValue));
    }
    bool Fails(const char *key, const char *defaultValue) const {
        bool fail = false;
        (void)ini_.GetValue(QString::fromLatin1(key), QString::fromUtf8(defaultValue),
                            &fail); // only Fail matters
        return fail;
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(QStringLiteral("prefs.ini"));
    clsINIFile ini_;
};

TEST_F(clsINIFileTest, NewObjectHasNeitherFileNorSection) {
    const clsINIFile ini;
    EXPECT_EQ(ini.File(), QString());
    EXPECT_EQ(ini.Section(), QString());
    EXPECT_EQ(ini.GetValue(kKey, QStringLiteral("default")), QStringLiteral("default"));
    EXPECT_NO_THROW(ini.Values(kKey, 1));
}

TEST_F(clsINIFileTest, SettingTheFileForgetsTheSection) {
    EXPECT_EQ(ini_.Section(), QStringLiteral("A"));
    ini_.SetFile(path_);
    EXPECT_EQ(ini_.File(), path_);
    EXPECT_EQ(ini_.Section(), QString());
}

TEST_F(clsINIFileTest, MissingKeyGivesTheDefaultWithoutFailing) {
    Put("[A]\r\nOther=1\r\n");
    EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
    EXPECT_FALSE(Fails("Key", "25"));
}

TEST_F(clsINIFileTest, MissingKeyWithAnEmptyDefaultFails) {
    Put("[A]\r\nOther=1\r\n");
    EXPECT_EQ(Value("Key"), QString());
    EXPECT_TRUE(Fails("Key", ""));
}

TEST_F(clsINIFileTest, EmptyValueGivesTheDefaultAndFails) {
    ini_.Values(kKey, QString());
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=\r\n"));
    EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
    EXPECT_TRUE(Fails("Key", "25"));
}

TEST_F(clsINIFileTest, FoundValueDoesNotFail) {
    Put("[A]\r\nKey=1\r\n");
    EXPECT_FALSE(Fails("Key", ""));
    bool fail = true;
    EXPECT_EQ(ini_.GetValue(kKey, QString(), &fail), QStringLiteral("1"));
    EXPECT_FALSE(fail) << "an old outcome is cleared";
}

TEST_F(clsINIFileTest, MissingFileAndSectionAreMissingKeys) {
    EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
    EXPECT_FALSE(Fails("Key", "25"));
    Put("[B]\r\nKey=1\r\n");
    EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
    EXPECT_TRUE(Fails("Key", ""));
}

TEST_F(clsINIFileTest, LongValueIsCut) {
    Put("[A]\r\nKey=" + QByteArray(3500, 'x') + "\r\n");
    EXPECT_EQ(Value("Key"), QString(3071, u'x'));
}

TEST_F(clsINIFileTest, LongestValueIsWhole) {
    Put("[A]\r\nKey=" + QByteArray(3071, 'x') + "\r\n");
    EXPECT_EQ(Value("Key"), QString(3071, u'x'));
}

TEST_F(clsINIFileTest, LongValueIsWrittenWhole) {
    ini_.Values(kKey, QString(3500, u'x'));
    EXPECT_EQ(Bytes(), "[A]\r\nKey=" + QByteArray(3500, 'x') + "\r\n");
}

TEST_F(clsINIFileTest, CutCountsCharactersAndNotBytes) {
    ini_.Values(kKey, QString(3500, QChar(0x00E9)));
    EXPECT_EQ(Value("Key"), QString(3071, QChar(0x00E9)));
}

TEST_F(clsINIFileTest, LongDefaultIsCutToo) {
    EXPECT_EQ(ini_.GetValue(kKey, QString(3500, u'd')), QString(3071, u'd'));
}

TEST_F(clsINIFileTest, ValuesAreWrittenAsText) {
    ini_.Values(QStringLiteral("Yes"), true);
    ini_.Values(QStringLiteral("No"), false);
    ini_.Values(QStringLiteral("Number"), -42);
    ini_.Values(QStringLiteral("Short"), QVariant::fromValue(static_cast<qint16>(25)));
    ini_.Values(QStringLiteral("Text"), QStringLiteral("Jos\u00E9"));
    EXPECT_EQ(Bytes(),
              QByteArray("[A]\r\nYes=True\r\nNo=False\r\nNumber=-42\r\nShort=25\r\nText=Jos\xC3\xA9\r\n"));
}

TEST_F(clsINIFileTest, LineBreaksInAValueBecomeBlanks) {
    ini_.Values(kKey, QStringLiteral("a\r\nb\nc\rd[B]"));
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=a b c d[B]\r\n"));
    EXPECT_EQ(Value("Key"), QStringLiteral("a b c d[B]"));
}

TEST_F(clsINIFileTest, WriteKeepsEverythingElse) {
    Put("; mine\r\n\r\n[B]\r\nKey=b\r\n\r\n[a]\nkey = old \nlast=1");
    ini_.Values(kKey, QStringLiteral("new"));
    ini_.Values(QStringLiteral("Added"), 1);
    EXPECT_EQ(Bytes(), QByteArray("; mine\r\n\r\n[B]\r\nKey=b\r\n\r\n[a]\nKey=new\nlast=1\r\nAdded=1\r\n"));
}

TEST_F(clsINIFileTest, OnlyWhatChangesIsWritten) {
    Put("[A]\r\nKey=1\r\n");
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5, 6));
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    ini_.Values(kKey, 1);
    ini_.DeleteKey(QStringLiteral("Other"));
    ini_.DeleteSection(QStringLiteral("B"));
    EXPECT_EQ(QFileInfo(path_).lastModified(), longAgo);
    ini_.Values(kKey, 2);
    EXPECT_NE(QFileInfo(path_).lastModified(), longAgo);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=2\r\n"));
}

TEST_F(clsINIFileTest, TwoInstancesSeeEachOthersChanges) {
    clsINIFile other;
    other.SetFile(path_);
    other.SetSection(QStringLiteral("a"));
    ini_.Values(kKey, 1);
    EXPECT_EQ(other.GetValue(kKey), QStringLiteral("1"));
    other.Values(kKey, 2);
    EXPECT_EQ(Value("Key"), QStringLiteral("2"));
    ini_.DeleteKey(kKey);
    EXPECT_EQ(other.GetValue(kKey, QStringLiteral("gone")), QStringLiteral("gone"));
}

TEST_F(clsINIFileTest, ByteOrderMarkIsSkipped) {
    Put("\xEF\xBB\xBF[A]\r\nKey=1\r\n");
    EXPECT_EQ(Value("Key"), QStringLiteral("1"));
    ini_.Values(QStringLiteral("New"), 2);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1\r\nNew=2\r\n"));
}

TEST_F(clsINIFileTest, Windows1252IsUnderstood) {
    Put("[A]\r\nKey=caf\xE9 \x80 \x81\r\n");
    EXPECT_EQ(Value("Key"), QStringLiteral("caf\u00E9 \u20AC \u0081"));
}

TEST_F(clsINIFileTest, WriteKeepsTheTextOfAWindows1252File) {
    Put("[A]\r\nKey=caf\xE9\r\n");
    ini_.Values(QStringLiteral("New"), 1);
    EXPECT_EQ(Value("Key"), QStringLiteral("caf\u00E9"));
    EXPECT_EQ(Value("New"), QStringLiteral("1"));
}

TEST_F(clsINIFileTest, DeleteKeyRemovesItFromTheCurrentSection) {
    Put("[A]\r\nKey=1\r\n[B]\r\nKey=2\r\n");
    ini_.DeleteKey(QStringLiteral("KEY"));
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\n[B]\r\nKey=2\r\n"));
}

TEST_F(clsINIFileTest, DeleteSectionLeavesTheCurrentSection) {
    Put("[X]\r\nKey=1\r\n[Y]\r\nKey=2\r\n");
    ini_.SetSection(QStringLiteral("Y"));
    ini_.DeleteSection(QStringLiteral("X"));
    EXPECT_EQ(ini_.Section(), QStringLiteral("Y"));
    EXPECT_EQ(Bytes(), QByteArray("[Y]\r\nKey=2\r\n"));
}

TEST_F(clsINIFileTest, DeletingWhatIsMissingGoesUnnoticed) {
    ini_.DeleteKey(kKey);
    ini_.DeleteSection(QStringLiteral("X"));
    EXPECT_EQ(Bytes(), QByteArray("(no file)"));
    Put("[A]\r\nKey=1");
    ini_.DeleteKey(QStringLiteral("Other"));
    ini_.DeleteSection(QStringLiteral("X"));
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1"));
}

TEST_F(clsINIFileTest, NewFileIsReadableByItsOwnerOnly) {
    ini_.Values(QStringLiteral("POPPassword"), QStringLiteral("secret"));
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                            QFileDevice::WriteOther | QFileDevice::ExeOther;
    EXPECT_EQ(QFile::permissions(path_) & others, QFileDevice::Permissions());
    EXPECT_TRUE(QFile::permissions(path_).testFlags(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    ini_.Values(kKey, 1);
    EXPECT_EQ(QFile::permissions(path_) & others, QFileDevice::Permissions()) << "after a second write";
}

TEST_F(clsINIFileTest, PermissionsOfAnExistingFileAreKept) {
    Put("[A]\r\n");
    const auto shared = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path_, shared));
    ini_.Values(kKey, 1);
    EXPECT_TRUE(QFile::permissions(path_).testFlag(QFileDevice::ReadGroup));
    EXPECT_FALSE(QFile::permissions(path_).testFlag(QFileDevice::ReadOther));
}

TEST_F(clsINIFileTest, WriteIntoAVanishedFolderGoesUnnoticed) {
    ASSERT_TRUE(folder_.remove());
    ini_.Values(kKey, 1);
    ini_.DeleteKey(kKey);
    ini_.DeleteSection(QStringLiteral("A"));
    EXPECT_FALSE(QFileInfo::exists(folder_.path()));
    EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
}

TEST_F(clsINIFileTest, FolderInPlaceOfTheFileGoesUnnoticed) {
    ASSERT_TRUE(QDir().mkpath(path_ + QStringLiteral("/inside")));
    ini_.Values(kKey, 1);
    ini_.DeleteKey(kKey);
    EXPECT_TRUE(QFileInfo(path_ + QStringLiteral("/inside")).isDir());
    EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
}

TEST_F(clsINIFileTest, FullDiskLeavesTheOldFileAtEveryByte) {
    const QByteArray old("[A]\r\nKey=1\r\n; a comment that is worth keeping\r\n");
    Put(old);
    for (rlim_t room = 0; room < static_cast<rlim_t>(old.size()); ++room) {
        {
            const FullDisk disk(room);
            ini_.Values(kKey, 2);
        }
        ASSERT_EQ(Bytes(), old) << "with room for " << room << " bytes";
    }
    ini_.Values(kKey, 2);
    EXPECT_EQ(Value("Key"), QStringLiteral("2"));
}

TEST_F(clsINIFileTest, ReadOnlyFileStaysAsItIs) {
    Put("[A]\r\nKey=1\r\n");
    ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::ReadOther));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFileDevice::Permissions(0x7777)));
    {
        const WithoutRootRights asUser;
        ini_.Values(kKey, 2);
        ini_.DeleteKey(kKey);
        ini_.DeleteSection(QStringLiteral("A"));
        EXPECT_EQ(Value("Key"), QStringLiteral("1"));
    }
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1\r\n"));
}

TEST_F(clsINIFileTest, FileThatCannotBeReadIsNeverReplaced) {
    Put("[A]\r\nKey=1\r\n");
    ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::WriteOwner | QFileDevice::WriteOther));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFileDevice::Permissions(0x7777)));
    {
        const WithoutRootRights asUser;
        ini_.Values(QStringLiteral("New"), 2);
        EXPECT_EQ(Value("Key", "25"), QStringLiteral("25"));
    }
    ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1\r\n"));
}

} // namespace
} // namespace varlo::test
