// Files that cannot be changed, and the failures reported.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <utility>

#include "child_process.h"
#include "ini_change_fixture.h"
#include "recording_files.h"
#include "watched_files.h"

namespace jx::ini::test {
namespace {

// A mount namespace of this process, so that no mount outlives the test.
constexpr int kMayNotMount = 77;
bool ownMounts() {
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

TEST_F(IniChangeTest, RefusesWhatIsNotARegularFileWithoutWaiting) {
    std::filesystem::create_directory(home_.file("directory"));
    ASSERT_EQ(::mkfifo(home_.file("fifo").c_str(), 0666), 0);
    ASSERT_EQ(::symlink("fifo", home_.file("link").c_str()), 0);
    ASSERT_EQ(::symlink("directory/", home_.file("slash").c_str()), 0);
    struct Row {
        std::string path;
        std::string reported;
        int error;
    };
    const Row rows[] = {{home_.file("directory"), home_.file("directory"), EISDIR},
                        {home_.file("directory/"), home_.file("directory/"), EISDIR},
                        {home_.file("fifo"), home_.file("fifo"), ENOTSUP},
                        {home_.file("link"), home_.file("fifo"), ENOTSUP},
                        {home_.file("slash"), home_.file("directory/"), EISDIR}};
    const Names before = home_.names();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_FALSE(write(row.path, "A", "k", "1"));
        expectFailure(JxIniStepOpen, row.error, row.reported);
        EXPECT_EQ(home_.names(), before);
    }
    EXPECT_TRUE(std::filesystem::is_empty(home_.file("directory")));
}

// A device made for the test: a mistake must not damage one of the machine's.
TEST_F(IniChangeTest, RefusesADevice) {
    const std::string device = home_.file("device");
    if (::mknod(device.c_str(), S_IFCHR | 0666, ::makedev(1, 3)) != 0)
        GTEST_SKIP() << "this process may not make a device";
    EXPECT_FALSE(write(device, "A", "k", "1"));
    expectFailure(JxIniStepOpen, ENOTSUP, device);
    EXPECT_TRUE(S_ISCHR(stateOf(device).st_mode));
    EXPECT_EQ(home_.names(), Names{"device"});
}

TEST_F(IniChangeTest, ReportsWhatCannotBeFound) {
    home_.put("plain", "");
    EXPECT_FALSE(write(home_.file("plain/x.ini"), "A", "k", "1"));
    expectFailure(JxIniStepLock, ENOTDIR, home_.file("plain/.x.ini.jxlock"));
    EXPECT_FALSE(write(home_.file("no/x.ini"), "A", "k", "1"));
    expectFailure(JxIniStepLock, ENOENT, home_.file("no/.x.ini.jxlock"));
    EXPECT_FALSE(write(home_.file(std::string(300, 'n')), "A", "k", "1"));
    expectFailure(JxIniStepLook, ENAMETOOLONG, home_.file(std::string(300, 'n')));
}

TEST_F(IniChangeTest, ReportsThatThereIsNoPath) {
    IniChange change;
    errno = ENOENT;
    EXPECT_FALSE(change.begin({}));
    expectFailure(JxIniStepLocate, ENOENT, "");
}

TEST_F(IniChangeTest, RefusesAFileThatIsTooBig) {
    putText(file_, "[A]\nk=1\n");
    ASSERT_EQ(::truncate(file_.c_str(), off_t{1} << 30), 0);  // a hole, which takes no space
    RecordingFiles files;
    const InUse inUse(files);
    EXPECT_FALSE(write(file_, "A", "k", "2"));
    expectFailure(JxIniStepRead, EFBIG, file_);
    EXPECT_EQ(std::count(files.trace().begin(), files.trace().end(), "read x.ini"), 0);
    EXPECT_EQ(stateOf(file_).st_size, off_t{1} << 30);
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniChangeTest, ReadsAFileThatGrowsMeanwhileToItsEnd) {
    home_.put("x.ini", "[A]\n");
    class Growing : public WatchedFiles {
    public:
        explicit Growing(std::string path) : path_(std::move(path)) {}
        int before(Call call, std::string_view) override {
            if (call == Call::read && !std::exchange(grown_, true))
                putText(path_, "[A]\n" + std::string(100, ';') + "\nk=1\n");
            return 0;
        }

    private:
        const std::string path_;
        bool grown_ = false;
    };
    Growing files(file_);
    const InUse inUse(files);
    ASSERT_TRUE(write(file_, "A", "k", "2"));
    EXPECT_EQ(home_.text("x.ini"), "[A]\n" + std::string(100, ';') + "\nk=2\n");
}

TEST_F(IniChangeTest, ARefusedEditIsReportedAndChangesNothing) {
    home_.put("x.ini", "[A]\nk=1\n");
    IniChange change;
    ASSERT_TRUE(change.begin({file_}));
    EXPECT_EQ(change.apply("A", "k=", "2"), Edit::refused);
    expectFailure(JxIniStepArgument, EINVAL, file_);
    EXPECT_EQ(change.text(), "[A]\nk=1\n");
    EXPECT_EQ(change.apply("A", "k", "3"), Edit::changed);
    EXPECT_TRUE(change.commit());
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=3\n");
}

TEST_F(IniChangeTest, AUserWithoutRightsChangesNothing) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file that this user has no right to";
    putText(file_, "[A]\nk=1\n", 0600);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        expectFailure(JxIniStepOpen, EACCES, file_);
    }));
    ASSERT_EQ(::chmod(home_.path().c_str(), 0700), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        expectFailure(JxIniStepLook, EACCES, file_);
    }));
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniChangeTest, ADirectoryThatMayNotBeReadCountsAsFlushed) {
    ASSERT_TRUE(::geteuid() != 0 || ::chown(home_.path().c_str(), kNobody, kNobody) == 0);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0300), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        EXPECT_TRUE(write(file_, "A", "k", "1"));
        EXPECT_EQ(textOf(file_), "[A]\nk=1\n");
    }));
    ASSERT_EQ(::chmod(home_.path().c_str(), 0700), 0);
}

// Fails one call on the directory.
class DirectoryFiles : public WatchedFiles {
public:
    DirectoryFiles(Call call, int error) : call_(call), error_(error) {}

protected:
    int before(Call call, std::string_view) override {
        // The second flush, or the fourth open, of a change is the directory's.
        opens_ += call == Call::open ? 1 : 0;
        flushes_ += call == Call::flush ? 1 : 0;
        const bool isDirectory = call == Call::open ? opens_ == 4 : call == Call::flush && flushes_ == 2;
        return isDirectory && call == call_ ? error_ : 0;
    }

private:
    const Call call_;
    const int error_;
    int opens_ = 0;
    int flushes_ = 0;
};

TEST_F(IniChangeTest, AnUnflushableDirectoryCountsAsFlushedAndAFailedFlushIsReported) {
    struct Row {
        Call call;
        int error;
        bool written;
        bool inPlace;
    };
    constexpr Row kRows[] = {
        {Call::open, EACCES, true, true},   {Call::open, EIO, true, true},      {Call::open, EMFILE, false, false},
        {Call::open, ENFILE, false, false}, {Call::open, ENOMEM, false, false}, {Call::flush, EINVAL, true, true},
        {Call::flush, ENOTSUP, true, true}, {Call::flush, EROFS, true, true},   {Call::flush, EIO, false, true},
        {Call::flush, ENOSPC, false, true},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(nameOf(row.call)) + " " + std::to_string(row.error));
        home_.put("x.ini", "[A]\nk=1\n");
        {
            DirectoryFiles files(row.call, row.error);
            const InUse inUse(files);
            EXPECT_EQ(write(file_, "A", "k", "2"), row.written);
        }
        EXPECT_EQ(home_.text("x.ini"), row.inPlace ? "[A]\nk=2\n" : "[A]\nk=1\n");
        EXPECT_EQ(home_.names(), Names{"x.ini"});
        if (row.written)
            continue;
        EXPECT_EQ(lastFailure().step, row.inPlace ? JxIniStepFlushDirectory : JxIniStepOpen);
        EXPECT_EQ(lastFailure().error, row.error);
        EXPECT_EQ(lastFailure().path, home_.path());
        EXPECT_EQ(lastFailure().afterRename, row.inPlace);
    }
}

TEST_F(IniChangeTest, AMountPointIsNeverEditedInPlace) {
    home_.put("x.ini", "under the mount");
    home_.put("mounted.ini", "[A]\nk=1\n");
    const int status = statusOfChild([&] {
        if (!ownMounts() || ::mount(home_.file("mounted.ini").c_str(), file_.c_str(), nullptr, MS_BIND, nullptr) != 0)
            ::_exit(kMayNotMount);
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        expectFailure(JxIniStepRename, EBUSY, file_);
        EXPECT_EQ(textOf(file_), "[A]\nk=1\n");
        EXPECT_EQ(home_.names(), (Names{"mounted.ini", "x.ini"}));
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == kMayNotMount)
        GTEST_SKIP() << "this process may not mount";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(home_.text("x.ini"), "under the mount");
    EXPECT_EQ(home_.text("mounted.ini"), "[A]\nk=1\n");
}

TEST_F(IniChangeTest, AReadOnlyFileSystemIsReported) {
    home_.put("x.ini", "[A]\nk=1\n");
    const int status = statusOfChild([&] {
        const char* path = home_.path().c_str();
        if (!ownMounts() || ::mount(path, path, nullptr, MS_BIND, nullptr) != 0 ||
            ::mount(nullptr, path, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            ::_exit(kMayNotMount);
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        expectFailure(JxIniStepLock, EROFS, lock_);
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == kMayNotMount)
        GTEST_SKIP() << "this process may not mount";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
}

TEST_F(IniChangeTest, AFullFileSystemIsReported) {
    const int status = statusOfChild([&] {
        if (!ownMounts() || ::mount("none", home_.path().c_str(), "tmpfs", 0, "size=72k") != 0)
            ::_exit(kMayNotMount);
        const std::string before = "[A]\nk=1\n;" + std::string(30'000, 'x') + "\n";
        putText(file_, before);
        EXPECT_FALSE(write(file_, "A", "k", std::string(40'000, 'y').c_str()));
        expectFailure(JxIniStepWrite, ENOSPC, file_);
        EXPECT_EQ(textOf(file_), before);
        EXPECT_EQ(home_.names(), Names{"x.ini"});
        EXPECT_TRUE(write(file_, "A", "k", "2"));
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == kMayNotMount)
        GTEST_SKIP() << "this process may not mount";
    EXPECT_EQ(status, 0);
}

TEST_F(IniChangeTest, AFileSizeLimitIsReported) {
    home_.put("x.ini", "[A]\nk=1\n");
    EXPECT_TRUE(passesInChild([&] {
        const rlimit limit{1000, 1000};  // SIGXFSZ, left at its default, would end the process
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        EXPECT_FALSE(write(file_, "A", "k", std::string(2000, 'y').c_str()));
        expectFailure(JxIniStepWrite, EFBIG, file_);
        EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
        EXPECT_EQ(home_.names(), Names{"x.ini"});
        EXPECT_TRUE(write(file_, "A", "k", "2"));
        sigset_t waiting;
        sigpending(&waiting);
        EXPECT_EQ(sigismember(&waiting, SIGXFSZ), 0);
        EXPECT_EQ(::pthread_sigmask(SIG_BLOCK, nullptr, &waiting), 0);
        EXPECT_EQ(sigismember(&waiting, SIGXFSZ), 0);
    }));
}

// A limit below the lock file's line.
TEST_F(IniChangeTest, NoRoomForTheLockIsReported) {
    home_.put("x.ini", "[A]\nk=1\n");
    EXPECT_TRUE(passesInChild([&] {
        const rlimit limit{0, 0};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        expectFailure(JxIniStepLock, EFBIG, lock_);
        EXPECT_EQ(home_.names(), Names{"x.ini"});
    }));
}

}  // namespace
}  // namespace jx::ini::test
