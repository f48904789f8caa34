// List boxes and what their messages return.
#include <climits>

#include "dialog_dump.h"
#include "sample_dialog.h"

using namespace jx::test;

namespace {

class ListBoxes : public SampleDialog {
protected:
    int send(int message, int wparam = 0, const void* lparam = nullptr) {
        return JXW_SendDlgItemMessage(dialog, kList, message, wparam, reinterpret_cast<uintptr_t>(lparam));
    }

    int add(const char* text) { return send(LB_ADDSTRING, 0, text); }

    // The rows, the selected one in brackets.
    std::string rows() {
        std::string all;
        for (int row = 0; row < send(LB_GETCOUNT); ++row) {
            std::string text(static_cast<std::size_t>(send(LB_GETTEXTLEN, row)) + 1, '?');
            EXPECT_EQ(send(LB_GETTEXT, row, text.data()), static_cast<int>(text.size()) - 1);
            text.pop_back();
            all += row == send(LB_GETCURSEL) ? "[" + text + "]" : text;
            all += " ";
        }
        return all;
    }

    HWND dialog = create();
};

TEST_F(ListBoxes, UseTheSixteenBitNumbers) {
    EXPECT_EQ(LB_ADDSTRING, 1025);
    EXPECT_EQ(LB_INSERTSTRING, 1026);
    EXPECT_EQ(LB_DELETESTRING, 1027);
    EXPECT_EQ(LB_RESETCONTENT, 1029);
    EXPECT_EQ(LB_SETCURSEL, 1031);
    EXPECT_EQ(LB_GETCURSEL, 1033);
    EXPECT_EQ(LB_GETTEXT, 1034);
    EXPECT_EQ(LB_GETTEXTLEN, 1035);
    EXPECT_EQ(LB_GETCOUNT, 1036);
    EXPECT_EQ(static_cast<unsigned short>(LB_ERR), 65535);
}

TEST_F(ListBoxes, KeepRowsInTheOrderInWhichTheyCame) {
    EXPECT_EQ(add("b"), 0);
    EXPECT_EQ(add("a"), 1);
    EXPECT_EQ(add(""), 2);
    EXPECT_EQ(add("a"), 3);
    EXPECT_EQ(rows(), "b a  a ");
    EXPECT_EQ(send(LB_GETCOUNT), 4);
}

TEST_F(ListBoxes, StartEmptyWithNothingSelected) {
    EXPECT_EQ(send(LB_GETCOUNT), 0);
    EXPECT_EQ(send(LB_GETCURSEL), LB_ERR);
}

TEST_F(ListBoxes, InsertAtTheRowAskedFor) {
    struct Row {
        int place, answer;
        const char* after;
    };
    for (const Row& row : {Row{0, 0, "x a [b] c "}, Row{1, 1, "a x [b] c "}, Row{2, 2, "a [b] x c "},
                           Row{3, 3, "a [b] c x "}, Row{-1, 3, "a [b] c x "}, Row{4, LB_ERR, "a [b] c "},
                           Row{-2, LB_ERR, "a [b] c "}, Row{INT_MAX, LB_ERR, "a [b] c "}}) {
        SCOPED_TRACE(row.place);
        send(LB_RESETCONTENT);
        for (const char* text : {"a", "b", "c"})
            add(text);
        send(LB_SETCURSEL, 1);
        EXPECT_EQ(send(LB_INSERTSTRING, row.place, "x"), row.answer);
        EXPECT_EQ(rows(), row.after);
    }
}

TEST_F(ListBoxes, RemoveARowAndKeepTheSelectionOnItsRow) {
    for (const char* text : {"a", "b", "c", "d"})
        add(text);
    send(LB_SETCURSEL, 2);
    EXPECT_EQ(send(LB_DELETESTRING, 0), 3);
    EXPECT_EQ(rows(), "b [c] d ");
    EXPECT_EQ(send(LB_DELETESTRING, 2), 2);
    EXPECT_EQ(rows(), "b [c] ");
    EXPECT_EQ(send(LB_DELETESTRING, 1), 1);
    EXPECT_EQ(rows(), "b ");
    EXPECT_EQ(send(LB_DELETESTRING, 1), LB_ERR);
    EXPECT_EQ(send(LB_DELETESTRING, -1), LB_ERR);
    EXPECT_EQ(rows(), "b ");
}

TEST_F(ListBoxes, SelectAndForgetTheSelection) {
    add("a");
    add("b");
    EXPECT_EQ(send(LB_SETCURSEL, 1), 1);
    EXPECT_EQ(send(LB_GETCURSEL), 1);
    EXPECT_EQ(send(LB_SETCURSEL, 2), LB_ERR);
    EXPECT_EQ(send(LB_GETCURSEL), 1);
    EXPECT_EQ(send(LB_SETCURSEL, -1), LB_ERR);
    EXPECT_EQ(send(LB_GETCURSEL), LB_ERR);
    send(LB_SETCURSEL, 0);
    EXPECT_EQ(send(LB_SETCURSEL, 65535), LB_ERR);
    EXPECT_EQ(send(LB_GETCURSEL), LB_ERR);
    send(LB_SETCURSEL, 0);
    EXPECT_EQ(send(LB_RESETCONTENT), 0);
    EXPECT_EQ(send(LB_GETCURSEL), LB_ERR);
    EXPECT_EQ(send(LB_GETCOUNT), 0);
}

TEST_F(ListBoxes, LeaveTheBufferAloneForARowThatDoesNotExist) {
    add("a");
    char buffer[4] = "abc";
    for (const int row : {-1, 1, 65535, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(row);
        EXPECT_EQ(send(LB_GETTEXT, row, buffer), LB_ERR);
        EXPECT_EQ(send(LB_GETTEXTLEN, row), LB_ERR);
    }
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(send(LB_GETTEXT, 0, nullptr), LB_ERR);
}

TEST_F(ListBoxes, RefuseANullText) {
    EXPECT_EQ(send(LB_ADDSTRING), LB_ERR);
    EXPECT_EQ(send(LB_INSERTSTRING, 0), LB_ERR);
    EXPECT_EQ(send(LB_GETCOUNT), 0);
}

TEST_F(ListBoxes, HoldAsManyRowsAsSixteenBitsCount) {
    for (int row = 0; row < 32767; ++row)
        ASSERT_EQ(add("r"), row);
    EXPECT_EQ(add("one more"), LB_ERRSPACE);
    EXPECT_EQ(static_cast<short>(send(LB_GETCOUNT)), 32767);
}

TEST_F(ListBoxes, HoldLongRows) {
    const std::string text(70000, 'x');
    add(text.c_str());
    EXPECT_EQ(send(LB_GETTEXTLEN, 0), 70000);
    std::string copy(70001, '?');
    EXPECT_EQ(send(LB_GETTEXT, 0, copy.data()), 70000);
    EXPECT_EQ(copy.c_str(), text);
}

TEST_F(ListBoxes, AnswerMessagesTheyDoNotKnowWithZero) {
    add("a");
    for (const int message : {0, 1024, 1028, 1030, 1032, 1037, 513, -1})
        EXPECT_EQ(send(message, 0, "a"), 0) << message;
    EXPECT_EQ(rows(), "a ");
}

TEST_F(ListBoxes, OtherControlsAnswerTheirMessagesWithZero) {
    for (const SampleId id : {kLabel, kName, kGo, kFrame, kTrace})
        EXPECT_EQ(JXW_SendDlgItemMessage(dialog, id, LB_GETCOUNT, 0, 0), 0) << id;
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, 999, LB_GETCURSEL, 0, 0), 0);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, 0, LB_GETCURSEL, 0, 0), 0);
}

}  // namespace
