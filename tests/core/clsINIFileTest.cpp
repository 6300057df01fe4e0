#include "core/clsINIFile.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "support/FullDisk.h"
#include "support/WithoutRootRights.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

const QString kKey = u"Key"_s;

class clsINIFileTest : public testing::Test {
protected:
    clsINIFileTest() {
        ini_.SetFile(path_);
        ini_.SetSection(u"A"_s);
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
    QString path_ = folder_.filePath(u"prefs.ini"_s);
    clsINIFile ini_;
};

TEST_F(clsINIFileTest, NewObjectHasNeitherFileNorSection) {
    const clsINIFile ini;
    EXPECT_EQ(ini.File(), QString());
    EXPECT_EQ(ini.Section(), QString());
    EXPECT_EQ(ini.GetValue(kKey, u"default"_s), u"default"_s);
    EXPECT_NO_THROW(ini.Values(kKey, 1));
}

TEST_F(clsINIFileTest, SettingTheFileForgetsTheSection) {
    EXPECT_EQ(ini_.Section(), u"A"_s);
    ini_.SetFile(path_);
    EXPECT_EQ(ini_.File(), path_);
    EXPECT_EQ(ini_.Section(), QString());
}

TEST_F(clsINIFileTest, MissingKeyGivesTheDefaultWithoutFailing) {
    Put("[A]\r\nOther=1\r\n");
    EXPECT_EQ(Value("Key", "25"), u"25"_s);
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
    EXPECT_EQ(Value("Key", "25"), u"25"_s);
    EXPECT_TRUE(Fails("Key", "25"));
}

TEST_F(clsINIFileTest, FoundValueDoesNotFail) {
    Put("[A]\r\nKey=1\r\n");
    EXPECT_FALSE(Fails("Key", ""));
    bool fail = true;
    EXPECT_EQ(ini_.GetValue(kKey, QString(), &fail), u"1"_s);
    EXPECT_FALSE(fail) << "an old outcome is cleared";
}

TEST_F(clsINIFileTest, MissingFileAndSectionAreMissingKeys) {
    EXPECT_EQ(Value("Key", "25"), u"25"_s);
    EXPECT_FALSE(Fails("Key", "25"));
    Put("[B]\r\nKey=1\r\n");
    EXPECT_EQ(Value("Key", "25"), u"25"_s);
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
    ini_.Values(u"Yes"_s, true);
    ini_.Values(u"No"_s, false);
    ini_.Values(u"Number"_s, -42);
    ini_.Values(u"Short"_s, QVariant::fromValue(static_cast<qint16>(25)));
    ini_.Values(u"Text"_s, u"Jos\u00E9"_s);
    EXPECT_EQ(Bytes(),
              QByteArray("[A]\r\nYes=True\r\nNo=False\r\nNumber=-42\r\nShort=25\r\nText=Jos\xC3\xA9\r\n"));
}

TEST_F(clsINIFileTest, LineBreaksInAValueBecomeBlanks) {
    ini_.Values(kKey, u"a\r\nb\nc\rd[B]"_s);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=a b c d[B]\r\n"));
    EXPECT_EQ(Value("Key"), u"a b c d[B]"_s);
}

TEST_F(clsINIFileTest, WriteKeepsEverythingElse) {
    Put("; mine\r\n\r\n[B]\r\nKey=b\r\n\r\n[a]\nkey = old \nlast=1");
    ini_.Values(kKey, u"new"_s);
    ini_.Values(u"Added"_s, 1);
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
    ini_.DeleteKey(u"Other"_s);
    ini_.DeleteSection(u"B"_s);
    EXPECT_EQ(QFileInfo(path_).lastModified(), longAgo);
    ini_.Values(kKey, 2);
    EXPECT_NE(QFileInfo(path_).lastModified(), longAgo);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=2\r\n"));
}

TEST_F(clsINIFileTest, TwoInstancesSeeEachOthersChanges) {
    clsINIFile other;
    other.SetFile(path_);
    other.SetSection(u"a"_s);
    ini_.Values(kKey, 1);
    EXPECT_EQ(other.GetValue(kKey), u"1"_s);
    other.Values(kKey, 2);
    EXPECT_EQ(Value("Key"), u"2"_s);
    ini_.DeleteKey(kKey);
    EXPECT_EQ(other.GetValue(kKey, u"gone"_s), u"gone"_s);
}

TEST_F(clsINIFileTest, ByteOrderMarkIsSkipped) {
    Put("\xEF\xBB\xBF[A]\r\nKey=1\r\n");
    EXPECT_EQ(Value("Key"), u"1"_s);
    ini_.Values(u"New"_s, 2);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1\r\nNew=2\r\n"));
}

TEST_F(clsINIFileTest, Windows1252IsUnderstood) {
    Put("[A]\r\nKey=caf\xE9 \x80 \x81\r\n");
    EXPECT_EQ(Value("Key"), u"caf\u00E9 \u20AC \u0081"_s);
}

TEST_F(clsINIFileTest, WriteKeepsTheTextOfAWindows1252File) {
    Put("[A]\r\nKey=caf\xE9\r\n");
    ini_.Values(u"New"_s, 1);
    EXPECT_EQ(Value("Key"), u"caf\u00E9"_s);
    EXPECT_EQ(Value("New"), u"1"_s);
}

TEST_F(clsINIFileTest, DeleteKeyRemovesItFromTheCurrentSection) {
    Put("[A]\r\nKey=1\r\n[B]\r\nKey=2\r\n");
    ini_.DeleteKey(u"KEY"_s);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\n[B]\r\nKey=2\r\n"));
}

TEST_F(clsINIFileTest, DeleteSectionLeavesTheCurrentSection) {
    Put("[X]\r\nKey=1\r\n[Y]\r\nKey=2\r\n");
    ini_.SetSection(u"Y"_s);
    ini_.DeleteSection(u"X"_s);
    EXPECT_EQ(ini_.Section(), u"Y"_s);
    EXPECT_EQ(Bytes(), QByteArray("[Y]\r\nKey=2\r\n"));
}

TEST_F(clsINIFileTest, DeletingWhatIsMissingGoesUnnoticed) {
    ini_.DeleteKey(kKey);
    ini_.DeleteSection(u"X"_s);
    EXPECT_EQ(Bytes(), QByteArray("(no file)"));
    Put("[A]\r\nKey=1");
    ini_.DeleteKey(u"Other"_s);
    ini_.DeleteSection(u"X"_s);
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1"));
}

TEST_F(clsINIFileTest, NewFileIsReadableByItsOwnerOnly) {
    ini_.Values(u"POPPassword"_s, u"secret"_s);
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
    ini_.DeleteSection(u"A"_s);
    EXPECT_FALSE(QFileInfo::exists(folder_.path()));
    EXPECT_EQ(Value("Key", "25"), u"25"_s);
}

TEST_F(clsINIFileTest, FolderInPlaceOfTheFileGoesUnnoticed) {
    ASSERT_TRUE(QDir().mkpath(path_ + u"/inside"_s));
    ini_.Values(kKey, 1);
    ini_.DeleteKey(kKey);
    EXPECT_TRUE(QFileInfo(path_ + u"/inside"_s).isDir());
    EXPECT_EQ(Value("Key", "25"), u"25"_s);
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
    EXPECT_EQ(Value("Key"), u"2"_s);
}

TEST_F(clsINIFileTest, ReadOnlyFileStaysAsItIs) {
    Put("[A]\r\nKey=1\r\n");
    ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::ReadOther));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFileDevice::Permissions(0x7777)));
    {
        const WithoutRootRights asUser;
        ini_.Values(kKey, 2);
        ini_.DeleteKey(kKey);
        ini_.DeleteSection(u"A"_s);
        EXPECT_EQ(Value("Key"), u"1"_s);
    }
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1\r\n"));
}

TEST_F(clsINIFileTest, FileThatCannotBeReadIsNeverReplaced) {
    Put("[A]\r\nKey=1\r\n");
    ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::WriteOwner | QFileDevice::WriteOther));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFileDevice::Permissions(0x7777)));
    {
        const WithoutRootRights asUser;
        ini_.Values(u"New"_s, 2);
        EXPECT_EQ(Value("Key", "25"), u"25"_s);
    }
    ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    EXPECT_EQ(Bytes(), QByteArray("[A]\r\nKey=1\r\n"));
}

TEST_F(clsINIFileTest, ManyValuesAreWrittenTogether) {
    Put("; mine\r\n[B]\r\ny=1\r\n");
    ini_.Write(std::vector<IniEntry>{{u"A"_s, u"x"_s, u" 1 "_s}, {u"b"_s, u"Y"_s, u"2\r\n3"_s}});
    EXPECT_EQ(Bytes(), QByteArray("; mine\r\n[B]\r\nY=2 3\r\n[A]\r\nx=\" 1 \"\r\n"));
    EXPECT_EQ(ini_.GetValue(u"x"_s), u" 1 "_s);
    EXPECT_EQ(ini_.Section(), u"A"_s);
}

TEST_F(clsINIFileTest, FullDiskLeavesNoneOfManyValuesAtEveryByte) {
    const QByteArray old("[A]\r\nKey=1\r\n; a comment that is worth keeping\r\n");
    const std::vector<IniEntry> entries{{u"A"_s, u"Key"_s, u"2"_s}, {u"B"_s, u"Key"_s, u"3"_s}};
    Put(old);
    for (rlim_t room = 0; room < static_cast<rlim_t>(old.size()); ++room) {
        {
            const FullDisk disk(room);
            EXPECT_THROW(ini_.Write(entries), RuntimeError);
        }
        ASSERT_EQ(Bytes(), old) << "with room for " << room << " bytes";
    }
    ini_.Write(entries);
    EXPECT_EQ(Bytes(), old.mid(0, 5) + "Key=2\r\n; a comment that is worth keeping\r\n[B]\r\nKey=3\r\n");
}

TEST_F(clsINIFileTest, ManyValuesThatCannotBeWrittenNameTheFile) {
    ASSERT_TRUE(folder_.remove());
    try {
        ini_.Write(std::vector<IniEntry>{{u"A"_s, u"x"_s, u"1"_s}});
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), PathNotFound);
        EXPECT_EQ(error.Description(), u"The settings could not be written to "_s +
                                           QDir::toNativeSeparators(path_) + u": Path not found"_s);
    }
}

} // namespace
} // namespace varlo::test
