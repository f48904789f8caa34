// A change while other programs replace the file, or remove the lock.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>

#include <jxini.h>
#include <jxprofile.h>
#include "ini_change_fixture.h"
#include "watched_files.h"

namespace jx::ini::test {
namespace {

// Calls act before the nth call of a kind.
class InterferingFiles : public WatchedFiles {
public:
    InterferingFiles(Call call, int n, std::function<void()> act) : call_(call), n_(n), act_(std::move(act)) {}

    void pause(std::int64_t milliseconds) override {
        if (whileWaiting)
            whileWaiting();
        WatchedFiles::pause(milliseconds);
    }

    std::function<void()> whileWaiting;

protected:
    int before(Call call, std::string_view) override {
        if (call == call_ && ++calls_ == n_)
            act_();
        return 0;
    }

private:
    const Call call_;
    const int n_;
    const std::function<void()> act_;
    int calls_ = 0;
};

class IniChangeOvertakenTest : public IniChangeTest {
protected:
    // As an editor saves: a new file under the same name.
    void save(const std::string& text) const {
        home_.put("saved", text);
        ASSERT_EQ(::rename(home_.file("saved").c_str(), file_.c_str()), 0);
    }

    // A write by a writer that was let in because the lock file was removed by hand.
    void writeWithoutLock(const char* key) const {
        ASSERT_EQ(::unlink(lock_.c_str()), 0);
        ASSERT_TRUE(write(file_, "A", key, "other"));
    }

    bool profileWrite(const char* key, const char* value) const {
        const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
        return jxWritePrivateProfileString(bytes("A"), bytes(key), bytes(value), bytes(file_.c_str())) == 1;
    }

    void expectLeft(const std::string& text) const {
        EXPECT_EQ(home_.text("x.ini"), text);
        EXPECT_EQ(home_.names(), Names{"x.ini"});
    }
};

// The second look at a name is the one right before the renaming.
constexpr int kLookAtTarget = 3;

TEST_F(IniChangeTest, AFileThatIsReplacedWithoutTheLockIsReadAgain) {
    home_.put("x.ini", "[A]\nk=1\n");
    InterferingFiles files(Call::lookAtName, kLookAtTarget, [this] {
        home_.put("saved", "[A]\nk=1\n");
        ASSERT_EQ(::rename(home_.file("saved").c_str(), file_.c_str()), 0);
    });
    const InUse inUse(files);
    EXPECT_TRUE(write(file_, "A", "k", "2")) << "the text is the one that was read";
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=2\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniChangeTest, AFileThatIsReplacedAtTheLastMomentComesBack) {
    home_.put("x.ini", "[A]\nk=1\n");
    InterferingFiles files(Call::rename, 1, [this] {
        home_.put("saved", "[A]\nk=1\nsaved=1\n");
        ASSERT_EQ(::rename(home_.file("saved").c_str(), file_.c_str()), 0);
    });
    const InUse inUse(files);
    EXPECT_FALSE(write(file_, "A", "k", "2"));
    expectFailure(JxIniStepRename, ESTALE, file_);
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\nsaved=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniChangeTest, AFileThatAppearsOrGoesMeanwhileIsNoticed) {
    for (const Call call : {Call::lookAtName, Call::rename}) {
        SCOPED_TRACE(nameOf(call));
        const int n = call == Call::rename ? 1 : kLookAtTarget;
        {
            InterferingFiles files(call, n, [this] { home_.put("x.ini", "[B]\n"); });
            const InUse inUse(files);
            EXPECT_FALSE(write(file_, "A", "k", "2"));
            expectFailure(JxIniStepRename, ESTALE, file_);
        }
        EXPECT_EQ(home_.text("x.ini"), "[B]\n");
        InterferingFiles files(call, n, [this] { ::unlink(file_.c_str()); });
        const InUse inUse(files);
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        EXPECT_EQ(home_.names(), Names{});
    }
}

TEST_F(IniChangeTest, AChangeOfAnotherTextIsRefused) {
    home_.put("x.ini", "[A]\nk=1\n");
    JxIniChange* change = jxIniBegin(file_.c_str());
    ASSERT_EQ(jxIniSet(change, "A", "k", "2"), 1);
    home_.put("saved", "[A]\nk=3\n");
    ASSERT_EQ(::rename(home_.file("saved").c_str(), file_.c_str()), 0);
    EXPECT_EQ(jxIniCommit(change), 0);
    expectFailure(JxIniStepRename, ESTALE, file_);
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=3\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

// Whoever removes the lock lets a second writer in. Whatever the moment, both changes arrive.
TEST_F(IniChangeOvertakenTest, AtAnyCallAnotherWriterLosesNothing) {
    int moments = 0;
    for (const Call call : {Call::open, Call::read, Call::write, Call::flush, Call::lookAtName, Call::rename})
        for (int n = 1; n < 6; ++n) {
            SCOPED_TRACE(std::string(nameOf(call)) + " " + std::to_string(n));
            save("[A]\nk=1\n");
            bool acted = false;
            InterferingFiles files(call, n, [&] {
                useFiles(nullptr);
                if (stateOf(lock_).st_ino != 0) {
                    writeWithoutLock("other");
                    acted = true;
                }
                useFiles(&files);
            });
            {
                const InUse inUse(files);
                EXPECT_TRUE(profileWrite("mine", "1"));
            }
            moments += acted ? 1 : 0;
            const std::string text = home_.text("x.ini");
            EXPECT_NE(text.find("mine=1\n"), std::string::npos) << text;
            EXPECT_TRUE(!acted || text.find("other=other\n") != std::string::npos) << text;
            EXPECT_EQ(home_.names(), Names{"x.ini"});
        }
    EXPECT_GE(moments, 12);
}

TEST_F(IniChangeTest, OfTwoWritersWithoutALockNoneIsLost) {
    home_.put("x.ini", "[A]\n");
    IniChange robbed;
    ASSERT_TRUE(robbed.begin({file_}));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    ASSERT_TRUE(write(file_, "A", "second", "1"));
    robbed.apply("A", "first", "1");
    EXPECT_FALSE(robbed.commit()) << "it must not believe that it won";
    expectFailure(JxIniStepRename, ESTALE, file_);
    EXPECT_EQ(home_.text("x.ini"), "[A]\nsecond=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

// A file that is replaced again and again must not keep a writer for ever.
TEST_F(IniChangeOvertakenTest, BeginningAgainEndsAfterTenSeconds) {
    home_.put("x.ini", "[A]\nk=1\n");
    class Restless : public WatchedFiles {
    public:
        explicit Restless(std::function<void()> act) : act_(std::move(act)) {}
        std::int64_t waitingClockInMilliseconds() override { return now_ += 100; }

    protected:
        int before(Call call, std::string_view) override {
            if (call == Call::rename && !inside_) {
                inside_ = true;
                act_();
                inside_ = false;
            }
            return 0;
        }

    private:
        const std::function<void()> act_;
        std::int64_t now_ = 0;
        bool inside_ = false;
    };
    Restless files([this] { save("[A]\nk=1\n"); });
    const InUse inUse(files);
    EXPECT_FALSE(profileWrite("k", "2"));
    expectFailure(JxIniStepRename, ESTALE, file_);
    expectLeft("[A]\nk=1\n");
}

// Fails one rename, or each one that has flags.
class RenamingFiles : public WatchedFiles {
public:
    RenamingFiles(int n, int error) : n_(n), error_(error) {}

    int rename(int directory, const char* from, const char* to, unsigned flags) override {
        ++renames_;
        if (n_ == 0 ? flags != 0 : renames_ == n_) {
            errno = error_;
            return -1;
        }
        if (renames_ == 1 && beforeFirst)
            beforeFirst();
        return WatchedFiles::rename(directory, from, to, flags);
    }

    std::function<void()> beforeFirst;

private:
    const int n_;
    const int error_;
    int renames_ = 0;
};

TEST_F(IniChangeTest, AFileSystemThatCannotExchangeIsWrittenToAsWell) {
    for (const int error : {EINVAL, ENOSYS, ENOTSUP}) {
        SCOPED_TRACE(error);
        RenamingFiles files(0, error);
        const InUse inUse(files);
        EXPECT_TRUE(write(file_, "A", "k", "1")) << "a new file";
        EXPECT_TRUE(write(file_, "A", "k", "2"));
        EXPECT_EQ(home_.text("x.ini"), "[A]\nk=2\n");
        EXPECT_EQ(home_.names(), Names{"x.ini"});
        ASSERT_EQ(::unlink(file_.c_str()), 0);
    }
}

// The other program's text may be the only copy: it is not removed.
TEST_F(IniChangeTest, AnotherFileThatCannotBePutBackIsKept) {
    home_.put("x.ini", "[A]\nk=1\n");
    RenamingFiles files(2, EIO);
    files.beforeFirst = [this] {
        home_.put("saved", "precious");
        ASSERT_EQ(::rename(home_.file("saved").c_str(), file_.c_str()), 0);
    };
    const InUse inUse(files);
    EXPECT_FALSE(write(file_, "A", "k", "2"));
    EXPECT_EQ(lastFailure().step, JxIniStepRename);
    EXPECT_TRUE(lastFailure().afterRename);
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=2\n");
    ASSERT_EQ(home_.names().size(), 2U);
    EXPECT_TRUE(home_.names().front().starts_with(".x.ini.jxnew-"));
    EXPECT_EQ(home_.text(home_.names().front()), "precious");
}

}  // namespace
}  // namespace jx::ini::test
