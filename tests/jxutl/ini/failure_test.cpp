// The thread's last failure and its sentence.
#include "jxutl/thread/failure.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <thread>

namespace jx::ini::test {
namespace {

TEST(Failure, IsKeptUntilTheNextSuccess) {
    noteFailure(JxIniStepRename, "/a/x.ini", EBUSY);
    EXPECT_EQ(lastFailure().step, JxIniStepRename);
    EXPECT_EQ(lastFailure().path, "/a/x.ini");
    EXPECT_EQ(lastFailure().error, EBUSY);
    EXPECT_FALSE(lastFailure().afterRename);
    noteFailure(JxIniStepFlushDirectory, "/a", EIO, /*afterRename=*/true);
    EXPECT_EQ(lastFailure().step, JxIniStepFlushDirectory);
    EXPECT_TRUE(lastFailure().afterRename);
    noteSuccess();
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
    EXPECT_EQ(lastFailure().path, "");
    EXPECT_EQ(lastFailure().error, 0);
    EXPECT_FALSE(lastFailure().afterRename);
}

TEST(Failure, MayBeNotedFromItself) {
    noteFailure(JxIniStepOpen, "/a/long/path/that/does/not/fit/the/object/itself", EACCES);
    noteFailure(lastFailure());
    EXPECT_EQ(lastFailure().path, "/a/long/path/that/does/not/fit/the/object/itself");
    noteSuccess();
}

TEST(Failure, BelongsToItsThread) {
    noteFailure(JxIniStepOpen, "/mine", EACCES);
    std::thread([] {
        EXPECT_EQ(lastFailure().step, JxIniStepNone);
        noteFailure(JxIniStepRead, "/theirs", EIO);
    }).join();
    EXPECT_EQ(lastFailure().path, "/mine");
    noteSuccess();
}

// Notes a failure when its thread's objects are destroyed, after the store's.
struct LateUser {
    ~LateUser() {
        noteFailure(JxIniStepOpen, "/noted/while/the/thread/ends/and/long/enough/for/the/heap", ENOENT);
        noteSuccess();
        noteFailure(JxIniStepOpen, "/short", ENOENT);
    }
};

TEST(Failure, CanBeNotedWhileTheThreadEnds) {
    std::thread([] {
        thread_local const LateUser made;
        EXPECT_NE(&made, nullptr);
        noteFailure(JxIniStepRead, "/noted/while/the/thread/lives/and/long/enough/for/the/heap", EIO);
    }).join();
}

TEST(Failure, HasASentenceForEveryStep) {
    struct Row {
        Failure failure;
        const char* sentence;
    };
    const Row rows[] = {
        {{}, ""},
        {{JxIniStepArgument, "/a/x", EINVAL, false}, "Cannot change /a/x: Invalid argument"},
        {{JxIniStepMemory, "/a/x", ENOMEM, false}, "Cannot process /a/x: Cannot allocate memory"},
        {{JxIniStepLocate, "", ENOENT, false}, "Cannot find the file: No such file or directory"},
        {{JxIniStepLook, "/a/x", EACCES, false}, "Cannot look at /a/x: Permission denied"},
        {{JxIniStepOpen, "/a/x", EISDIR, false}, "Cannot open /a/x: Is a directory"},
        {{JxIniStepRead, "/a/x", EIO, false}, "Cannot read /a/x: Input/output error"},
        {{JxIniStepLock, "/a/.x.jxlock", ETIMEDOUT, false},
         "Cannot lock /a/.x.jxlock: another writer kept it locked for 10 seconds"},
        {{JxIniStepLock, "/a/.x.jxlock", EACCES, false}, "Cannot lock /a/.x.jxlock: Permission denied"},
        {{JxIniStepWrite, "/a/x", ENOSPC, false}, "Cannot write /a/x: No space left on device"},
        {{JxIniStepMode, "/a/x", EPERM, false}, "Cannot set the mode of /a/x: Operation not permitted"},
        {{JxIniStepOwner, "/a/x", EPERM, false}, "Cannot keep the owner of /a/x: Operation not permitted"},
        {{JxIniStepFlush, "/a/x", EIO, false}, "Cannot flush /a/x: Input/output error"},
        {{JxIniStepRename, "/a/x", ENOSPC, false}, "Cannot replace /a/x: No space left on device"},
        {{JxIniStepRename, "/a/x", ESTALE, false},
         "Cannot replace /a/x: another program replaced it at the same time; try again"},
        {{JxIniStepLocate, "/a/x", EACCES, false},
         "Cannot find /a/x: this symbolic link belongs to another user and is not followed"},
        {{JxIniStepLock, "/a/.x.jxlock", EEXIST, false},
         "Cannot lock /a/.x.jxlock: it is not a lock of this library, and is left alone; move it away"},
        {{JxIniStepFlushDirectory, "/a", EIO, true},
         "Cannot flush the directory /a: Input/output error (the new text is in place, but a power cut could undo it)"},
        {{JxIniStepRemove, "/a/.x.jxlock", EIO, false}, "Cannot remove /a/.x.jxlock: Input/output error"},
        {{JxIniStepOpen, "/a/x", 0, false}, "Cannot open /a/x"},
        {{JxIniStepOpen, "/a/x", 99999, false}, "Cannot open /a/x: error 99999"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        EXPECT_EQ(describe(row.failure), row.sentence);
    }
}

}  // namespace
}  // namespace jx::ini::test
