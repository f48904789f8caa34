// Message boxes: the handler, and what is written to standard error without one.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <jxdialog.h>
#include "allocations.h"

namespace {

using jx::test::ShortMemory;
using namespace std::string_literals;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// ErrorOutput: collects what the program writes to standard error while it exists.
class ErrorOutput {
public:
    ErrorOutput() : file_(std::tmpfile()), before_(dup(STDERR_FILENO)) {
        std::fflush(stderr);
        dup2(fileno(file_), STDERR_FILENO);
    }
    ~ErrorOutput() {
        dup2(before_, STDERR_FILENO);
        close(before_);
        std::fclose(file_);
    }
    ErrorOutput(const ErrorOutput&) = delete;
    ErrorOutput& operator=(const ErrorOutput&) = delete;

    std::string text() const {
        std::string all(static_cast<std::size_t>(lseek(fileno(file_), 0, SEEK_END)), '\0');
        const ssize_t read = pread(fileno(file_), all.data(), all.size(), 0);
        return read == static_cast<ssize_t>(all.size()) ? all : "(unreadable)";
    }

private:
    std::FILE* file_;
    int before_;
};

std::string written(const char* text, const char* title) {
    const ErrorOutput output;
    guiMessageBox(0, bytes(text), bytes(title), MB_OK);
    return output.text();
}

TEST(MessageBox, WithoutAHandlerGoesToStandardError) {
    EXPECT_EQ(written("The disk is full.", "KALDERO ODBC Admin"), "KALDERO ODBC Admin: The disk is full.\n");
}

TEST(MessageBox, NullTextsAreEmpty) {
    EXPECT_EQ(written(nullptr, "title"), "title: \n");
    EXPECT_EQ(written("text", nullptr), ": text\n");
    EXPECT_EQ(written(nullptr, nullptr), ": \n");
}

TEST(MessageBox, WithoutAHandlerIsAnsweredOkOrNo) {
    const ErrorOutput output;
    for (const unsigned int icon : {0U, 16U, 32U, 48U}) {
        SCOPED_TRACE(icon);
        EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_OK + icon), 1U);
        EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_YESNO + icon), 7U);
    }
}

TEST(MessageBox, OnlyHarmlessBytesReachTheTerminal) {
    const struct {
        std::string text;
        std::string shown;
    } rows[] = {
        {"line one\nline two", "line one\nline two"},
        {"a\tb\rc", "a?b?c"},
        {"\x1b[2J\x1b]0;title\x07", "?[2J?]0;title?"},
        {"\x01\x08\x7f!",
         "??"
         "?!"},
        {"na\xc3\xafve \xe2\x82\xac \xf0\x9f\x98\x80", "na\xc3\xafve \xe2\x82\xac \xf0\x9f\x98\x80"},
        {"caf\xe9 \xa0\xff", "caf\xe9 \xa0\xff"},  // not UTF-8, but letters of an 8-bit character set
        {"\x9b"
         "1m\x80\x9f",
         "?1m??"},  // control characters of an 8-bit terminal
        {"\xc2\x9b"
         "1m\xc2\x80\xc2\x9f",
         "?1m??"},  // the same in UTF-8
        {"\xc2\xa0\xc3\x9b", "\xc2\xa0\xc3\x9b"},
        {"\xc1\x9b", "\xc1?"},  // spelled longer than needed
        {"\xe0\x82\x9b", "\xe0??"},
        {"\xf0\x80\x82\x9b", "\xf0???"},
        {"\xed\xa0\x80", "\xed\xa0?"},    // half a pair
        {"\xf4\x90\x80\x80", "\xf4???"},  // beyond the last character
        {"\xe2\x82", "\xe2?"},            // cut
        {"\xf0\x9f\x98", "\xf0??"},
        {"\xc3", "\xc3"},
        {"\xc3\x1b[m", "\xc3?[m"},
        {"\xe2\x82\x1b[m", "\xe2??[m"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        EXPECT_EQ(written(row.text.c_str(), "t"), "t: " + row.shown + "\n");
    }
}

TEST(MessageBox, ATitleIsOneHarmlessLine) {
    EXPECT_EQ(written("x", "a\nb\x1b[m\xc3\xa9"), "a?b?[m\xc3\xa9: x\n");
}

TEST(MessageBox, LongTextsAreWrittenWhole) {
    for (const std::size_t size : {1020U, 1021U, 1022U, 1023U, 1024U, 1025U, 2048U, 70000U}) {
        const std::string text(size, 'x');
        EXPECT_EQ(written(text.c_str(), "t"), "t: " + text + "\n") << size;
        const std::string wide = text.substr(0, size - 1) + "\xe2\x82\xac";
        EXPECT_EQ(written(wide.c_str(), "t"), "t: " + wide + "\n") << size;
    }
}

TEST(MessageBox, AClosedStandardErrorIsNotAFailure) {
    const ErrorOutput output;
    close(STDERR_FILENO);
    EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_YESNO), 7U);
    EXPECT_EQ(guiMessageBox(0, bytes(std::string(5000, 'x').c_str()), bytes("y"), MB_OK), 1U);
}

TEST(MessageBox, AClosedPipeOnStandardErrorDoesNotEndTheProgram) {
    const ErrorOutput output;
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    close(ends[0]);
    ASSERT_EQ(dup2(ends[1], STDERR_FILENO), STDERR_FILENO);
    close(ends[1]);
    EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_YESNO), 7U);
    sigset_t waiting;
    ASSERT_EQ(sigpending(&waiting), 0);
    EXPECT_EQ(sigismember(&waiting, SIGPIPE), 0);
    sigset_t blocked;
    ASSERT_EQ(pthread_sigmask(SIG_SETMASK, nullptr, &blocked), 0);
    EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
}

TEST(MessageBox, NeedsNoMemory) {
    EXPECT_EQ(jx::test::failEachAllocation([](ShortMemory& memory) {
                  const ErrorOutput output;
                  memory.begin();
                  const unsigned int answer = guiMessageBox(0, bytes("text"), bytes("title"), MB_OK);
                  memory.end();
                  EXPECT_EQ(answer, 1U);
                  EXPECT_EQ(output.text(), "title: text\n");
              }),
              0);
}

// Handler: answers the boxes while it exists and records them as "owner|text|title|style".
class Handler {
public:
    explicit Handler(unsigned int answer) : answer_(answer) {
        EXPECT_EQ(JXW_SetMessageBoxHandler(&Handler::answer, this), 1);
    }
    ~Handler() { EXPECT_EQ(JXW_SetMessageBoxHandler(nullptr, nullptr), 1); }
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    std::vector<std::string> boxes;

private:
    static unsigned int answer(void* context, HWND owner, const char* text, const char* title, unsigned int style) {
        auto* self = static_cast<Handler*>(context);
        self->boxes.push_back(std::to_string(owner) + "|" + text + "|" + title + "|" + std::to_string(style));
        return self->answer_;
    }

    unsigned int answer_;
};

TEST(MessageBoxHandler, GetsTheBoxAndAnswersIt) {
    const ErrorOutput output;
    Handler handler(IDYES);
    EXPECT_EQ(guiMessageBox(0xFFFFFFFF, bytes("text\x1b"), bytes("title"), 36), 6U);
    EXPECT_EQ(handler.boxes, std::vector{"4294967295|text\x1b|title|36"s});
    EXPECT_EQ(output.text(), "");
}

TEST(MessageBoxHandler, GetsEmptyTextsForNull) {
    Handler handler(IDOK);
    EXPECT_EQ(guiMessageBox(0, nullptr, nullptr, 0), 1U);
    EXPECT_EQ(handler.boxes, std::vector{"0|||0"s});
}

TEST(MessageBoxHandler, AnyAnswerIsPassedOn) {
    const Handler handler(12345);
    EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_YESNO), 12345U);
}

TEST(MessageBoxHandler, IsReplacedAndRemoved) {
    {
        Handler first(IDYES);
        {
            Handler second(IDNO);
            EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_YESNO), 7U);
            EXPECT_EQ(second.boxes.size(), 1U);
        }
        EXPECT_TRUE(first.boxes.empty());
    }
    EXPECT_EQ(written("x", "y"), "y: x\n");
}

unsigned int throwing(void* /*context*/, HWND /*owner*/, const char* /*text*/, const char* /*title*/,
                      unsigned int /*style*/) {
    throw std::runtime_error("from the handler");
}

TEST(MessageBoxHandler, ItsExceptionsPassThrough) {
    JXW_SetMessageBoxHandler(throwing, nullptr);
    EXPECT_THROW(guiMessageBox(0, bytes("x"), bytes("y"), MB_OK), std::runtime_error);
    // No lock is left held.
    EXPECT_EQ(JXW_SetMessageBoxHandler(nullptr, nullptr), 1);
    EXPECT_EQ(written("x", "y"), "y: x\n");
}

unsigned int asking(void* context, HWND owner, const char* text, const char* title, unsigned int style) {
    JXW_SetMessageBoxHandler(nullptr, nullptr);
    *static_cast<std::string*>(context) += text;
    return guiMessageBox(owner, bytes(text), bytes(title), style);
}

TEST(MessageBoxHandler, MayRemoveItselfAndAskAgain) {
    const ErrorOutput output;
    std::string asked;
    JXW_SetMessageBoxHandler(asking, &asked);
    EXPECT_EQ(guiMessageBox(0, bytes("again"), bytes("t"), MB_YESNO), 7U);
    EXPECT_EQ(asked, "again");
    EXPECT_EQ(output.text(), "t: again\n");
}

}  // namespace
