#include "ui/qt/FolderLock.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace mw {
namespace {

// Another client: a process that asks for a folder and lives until it is killed.
class OtherClient {
public:
    explicit OtherClient(const QString& folder) {
        int answer[2];
        if (::pipe(answer) != 0)
            return;
        Process = ::fork();
        if (Process == 0) {
            const char taken = LockFolder(folder) ? 'y' : 'n';
            [[maybe_unused]] const ssize_t written = ::write(answer[1], &taken, 1);
            while (true)
                ::pause();
        }
        char taken = 0;
        HasAnswered = ::read(answer[0], &taken, 1) == 1;
        HasFolder = taken == 'y';
        ::close(answer[0]);
        ::close(answer[1]);
    }
    OtherClient(const OtherClient&) = delete;
    OtherClient& operator=(const OtherClient&) = delete;
    ~OtherClient() { Kill(); }

    // With no chance to tidy up.
    void Kill() {
        if (Process <= 0)
            return;
        ::kill(Process, SIGKILL);
        ::waitpid(Process, nullptr, 0);
        Process = -1;
    }

    bool HasAnswered = false;
    bool HasFolder = false;

private:
    pid_t Process = -1;
};

class FolderLock : public testing::Test {
protected:
    QString Path() const { return Folder.path(); }

    QTemporaryDir Folder;
};

TEST_F(FolderLock, IsTakenByTheFirstAndNoOther) {
    EXPECT_TRUE(LockFolder(Path()));
    EXPECT_FALSE(LockFolder(Path()));
    EXPECT_FALSE(LockFolder(Path()));
}

TEST_F(FolderLock, KeepsAnotherProcessOut) {
    ASSERT_TRUE(LockFolder(Path()));
    const OtherClient other(Path());
    ASSERT_TRUE(other.HasAnswered);
    EXPECT_FALSE(other.HasFolder);
}

TEST_F(FolderLock, IsGivenBackWhenItsHolderIsKilled) {
    OtherClient other(Path());
    ASSERT_TRUE(other.HasAnswered);
    EXPECT_TRUE(other.HasFolder);
    EXPECT_FALSE(LockFolder(Path()));
    other.Kill();
    EXPECT_TRUE(LockFolder(Path()));
}

TEST_F(FolderLock, IsGivenBackBeforeTheEnd) {
    ASSERT_TRUE(LockFolder(Path()));
    UnlockFolder();
    UnlockFolder(); // there is nothing more to give back
    const OtherClient other(Path());
    EXPECT_TRUE(other.HasFolder);
}

TEST_F(FolderLock, IsNotGivenBackByOneThatWasRefusedIt) {
    const OtherClient other(Path());
    ASSERT_TRUE(other.HasFolder);
    EXPECT_FALSE(LockFolder(Path()));
    UnlockFolder();
    EXPECT_FALSE(LockFolder(Path()));
}

TEST_F(FolderLock, StaysWithItsHolderWhenOneThatCameSecondIsKilled) {
    ASSERT_TRUE(LockFolder(Path()));
    OtherClient other(Path());
    other.Kill();
    EXPECT_FALSE(LockFolder(Path()));
}

TEST_F(FolderLock, IsOfOneFolderAlone) {
    QDir(Path()).mkdir("inner");
    EXPECT_TRUE(LockFolder(Path()));
    EXPECT_TRUE(LockFolder(Path() + "/inner"));
    EXPECT_FALSE(LockFolder(Path() + "/inner"));
}

TEST_F(FolderLock, IsTheSameBesidesItsSpelling) {
    QFile::link(Path(), Path() + "/link");
    EXPECT_TRUE(LockFolder(Path() + "/"));
    EXPECT_FALSE(LockFolder(Path() + "/."));
    EXPECT_FALSE(LockFolder(Path() + "/link"));
}

TEST_F(FolderLock, LeavesNothingInTheFolder) {
    EXPECT_TRUE(LockFolder(Path()));
    EXPECT_FALSE(LockFolder(Path()));
    EXPECT_TRUE(QDir(Path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(FolderLock, TakesAFolderOfAnyName) {
    const QString name = Path() + QString::fromUtf8("/my caf\xC3\xA9 'quoted'");
    QDir().mkdir(name);
    EXPECT_TRUE(LockFolder(name));
    EXPECT_FALSE(LockFolder(name));
}

TEST_F(FolderLock, WorksInAFolderThatCannotBeWritten) {
    QFile::setPermissions(Path(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(LockFolder(Path()));
    EXPECT_FALSE(LockFolder(Path()));
    QFile::setPermissions(Path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Nobody else can keep files there either.
TEST_F(FolderLock, IsNotRefusedForAFolderThatIsNotThere) {
    EXPECT_TRUE(LockFolder(Path() + "/nowhere"));
    EXPECT_TRUE(LockFolder(Path() + "/nowhere"));
    EXPECT_FALSE(QDir(Path() + "/nowhere").exists());
}

TEST_F(FolderLock, IsNotRefusedForAFileInTheFoldersPlace) {
    const QString name = Path() + "/file";
    EXPECT_TRUE(QFile(name).open(QFile::WriteOnly));
    EXPECT_TRUE(LockFolder(name));
    EXPECT_TRUE(LockFolder(name));
}

} // namespace
} // namespace mw
