#include "app/SingleInstance.h"

#include "core/Literals.h"
#include "support/ScriptedDialogs.h"
#include "support/WithoutRootRights.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace varlo::test {
namespace {

#ifdef Q_OS_UNIX // with fork

// A copy of the program in a process of its own: it takes the lock, and lives until it is let go or crashes.
class OtherCopy {
public:
    explicit OtherCopy(const QString &folder) {
        int taken[2] = {};
        int crash[2] = {};
        EXPECT_EQ(pipe(taken), 0);
        EXPECT_EQ(pipe(crash), 0);
        pid_ = fork();
        if (pid_ == 0) {
            close(crash[1]);
            const SingleInstance instance(folder);
            char byte = instance.IsFirst() ? 'y' : 'n';
            [[maybe_unused]] auto ignored = write(taken[1], &byte, 1);
            ignored = read(crash[0], &byte, 1); // until the other end is closed
            _exit(0);                           // no destructor runs: the lock file stays, as after a crash
        }
        close(taken[1]);
        close(crash[0]);
        letGo_ = crash[1];
        char byte = 0;
        EXPECT_EQ(read(taken[0], &byte, 1), 1);
        EXPECT_EQ(byte, 'y') << "the other copy was not the first one";
        close(taken[0]);
    }
    ~OtherCopy() { Crash(); }

    void Crash() {
        if (pid_ <= 0)
            return;
        close(letGo_);
        EXPECT_EQ(waitpid(pid_, nullptr, 0), pid_);
        pid_ = -1;
    }

private:
    pid_t pid_ = -1;
    int letGo_ = -1;
};

#endif

TEST(SingleInstance, FirstCopyHoldsALockInItsFolder) {
    const QTemporaryDir folder;
    const SingleInstance first(folder.path());
    EXPECT_TRUE(first.IsFirst());
    EXPECT_EQ(first.LockPath(), folder.filePath(u"varlo-pro.lock"_s));
    EXPECT_TRUE(QFile::exists(first.LockPath()));
}

TEST(SingleInstance, SecondCopyInTheSameFolderIsNotTheFirst) {
    const QTemporaryDir folder;
    const SingleInstance first(folder.path());
    const SingleInstance second(folder.path());
    EXPECT_FALSE(second.IsFirst());
    EXPECT_EQ(second.LockPath(), QString());
    EXPECT_TRUE(first.IsFirst());
}

#ifdef Q_OS_UNIX

TEST(SingleInstance, CopyInAnotherProcessIsSeen) {
    const QTemporaryDir folder;
    const OtherCopy other(folder.path());
    EXPECT_FALSE(SingleInstance(folder.path()).IsFirst());
}

#endif

TEST(SingleInstance, SameFolderUnderAnotherPathIsTheSameFolder) {
    const QTemporaryDir folder;
    const SingleInstance first(folder.path());
    const QTemporaryDir elsewhere;
    const QString link = elsewhere.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(folder.path(), link));
    EXPECT_FALSE(SingleInstance(link).IsFirst());
}

TEST(SingleInstance, CopiesInTwoFoldersDoNotKnowEachOther) {
    const QTemporaryDir one;
    const QTemporaryDir two;
    const SingleInstance first(one.path());
    EXPECT_TRUE(SingleInstance(two.path()).IsFirst());
}

TEST(SingleInstance, OrderlyEndLeavesNoLockBehind) {
    const QTemporaryDir folder;
    { const SingleInstance first(folder.path()); }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    EXPECT_TRUE(SingleInstance(folder.path()).IsFirst());
}

#ifdef Q_OS_UNIX

TEST(SingleInstance, LockOfACrashedCopyIsTakenOver) {
    const QTemporaryDir folder;
    OtherCopy other(folder.path());
    other.Crash();
    ASSERT_TRUE(QFile::exists(folder.filePath(u"varlo-pro.lock"_s)));
    const SingleInstance next(folder.path());
    EXPECT_TRUE(next.IsFirst());
    EXPECT_FALSE(SingleInstance(folder.path()).IsFirst());
}

#endif

TEST(SingleInstance, LockFileCutShortByAPowerFailureIsTakenOver) {
    const QTemporaryDir folder;
    QFile lock(folder.filePath(u"varlo-pro.lock"_s));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.close();
    EXPECT_TRUE(SingleInstance(folder.path()).IsFirst());
}

// A lock as a crash on another machine leaves it, seen after the folder has come here.
class ForeignLockTest : public testing::Test {
protected:
    ForeignLockTest() { WriteLock("0123456789abcdef"); }

    void WriteLock(const QByteArray &machineNumber, const QByteArray &machine = "office") const {
        QFile lock(path_);
        ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
        lock.write("4711\nvarlo-pro\n" + machine + '\n' + machineNumber + "\nboot\n");
    }
    bool Start(bool answer) {
        const SingleInstance instance(folder_.path(), [&](const DoubtfulLock &lock) {
            asked_ << lock.Path + u' ' + lock.Machine;
            return answer;
        });
        return instance.IsFirst() && instance.LockPath() == path_;
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"varlo-pro.lock"_s);
    QStringList asked_;
};

TEST_F(ForeignLockTest, IsTakenOverAfterAsking) {
    EXPECT_TRUE(Start(true));
    EXPECT_EQ(asked_, QStringList(path_ + u" office"_s));
}

TEST_F(ForeignLockTest, IsLeftAloneOnNo) {
    EXPECT_FALSE(Start(false));
    EXPECT_TRUE(QFile::exists(path_));
    EXPECT_FALSE(SingleInstance(folder_.path()).IsFirst()) << "and where nobody can be asked";
}

TEST_F(ForeignLockTest, MachinesOfOneNameAreToldApart) {
    WriteLock("0123456789abcdef", QSysInfo::machineHostName().toUtf8());
    EXPECT_TRUE(Start(true));
    EXPECT_EQ(asked_.size(), 1);
}

#ifdef Q_OS_UNIX

TEST_F(ForeignLockTest, ACopyThatLivesHereIsNeverAskedAbout) {
    ASSERT_TRUE(QFile::remove(path_));
    const OtherCopy other(folder_.path());
    EXPECT_FALSE(Start(true));
    EXPECT_EQ(asked_, QStringList());
}

#endif

TEST_F(ForeignLockTest, TheQuestionNamesMachineAndFileAndEnterSaysNo) {
    ScriptedDialogs boxes;
    boxes.Answers = {BoxAnswer::Yes, BoxAnswer::No};
    EXPECT_TRUE(AsksToTakeOver(boxes, {path_, u"office"_s}));
    EXPECT_FALSE(AsksToTakeOver(boxes, {path_, u"office"_s}));
    EXPECT_TRUE(boxes.Texts()[0].contains(u"[office]"_s));
    EXPECT_TRUE(boxes.Texts()[0].contains(path_));
    EXPECT_EQ(boxes.Destroying, boxes.Texts());
}

TEST(SingleInstance, FolderThatCannotBeWrittenLocksInTheCacheFolder) {
    const QTemporaryDir folder;
    const QTemporaryDir cache;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                         QFile::ExeOther));
    ASSERT_TRUE(QFile::setPermissions(cache.path(), QFile::Permissions(0x7777)));
    const QByteArray oldCache = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_CACHE_HOME", QFile::encodeName(cache.path()));
    {
        const WithoutRootRights asUser;
        const SingleInstance first(folder.path());
        EXPECT_TRUE(first.IsFirst());
        EXPECT_EQ(QFileInfo(first.LockPath()).path(), cache.path());
        EXPECT_FALSE(SingleInstance(folder.path()).IsFirst());
    }
    qputenv("XDG_CACHE_HOME", oldCache);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST(SingleInstance, StartsWithoutALockWhereNoneCanBeMade) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray oldCache = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_CACHE_HOME", QFile::encodeName(file.fileName())); // a file where a folder is needed
    const SingleInstance first(file.fileName() + u"/below"_s);
    qputenv("XDG_CACHE_HOME", oldCache);
    EXPECT_TRUE(first.IsFirst());
    EXPECT_EQ(first.LockPath(), QString());
}

TEST(SingleInstance, SecondCopyTellsWhyItEnds) {
    ScriptedDialogs boxes;
    ShowAlreadyRunning(boxes);
    EXPECT_EQ(boxes.Shown,
              (std::vector<ShownBox>{{u"Varlo Pro Error"_s,
                                      u"Varlo Pro is already running. Please close the other instance "
                                      "before starting Varlo Pro again."_s,
                                      BoxButtons::Ok, BoxIcon::Exclamation}}));
}

} // namespace
} // namespace varlo::test
