// The members of OdbcIns that fill list boxes and read their selection.
#include <gtest/gtest.h>
#include <jxdialog.h>
#include <jxwindow.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstring>
#include <string>

#include "test_home.h"

namespace jx::test {

namespace {

constexpr unsigned short kDataSourcesTemplate = 102;
constexpr short kList = 103;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

class ListBoxMembers : public testing::Test {
protected:
    ListBoxMembers()
        : dialog(JXW_CreateDialog(
              BJXHINST, kDataSourcesTemplate, 0, [](HWND, int, int, uintptr_t) { return 0U; }, nullptr)) {}
    ~ListBoxMembers() override {
        ins.ResetData(ResetAll);
        JXW_DestroyDialog(dialog);
    }

    int send(int message, int wparam = 0, const void* lparam = nullptr) const {
        return JXW_SendDlgItemMessage(dialog, kList, message, wparam, reinterpret_cast<uintptr_t>(lparam));
    }

    // The rows, the selected one in brackets.
    std::string rows() const {
        std::string all;
        for (int row = 0; row < send(LB_GETCOUNT); ++row) {
            std::string text(static_cast<std::size_t>(send(LB_GETTEXTLEN, row)), '?');
            send(LB_GETTEXT, row, text.data());
            all += (row == send(LB_GETCURSEL) ? "[" + text + "]" : text) + ";";
        }
        return all;
    }

    // The enabling of the Setup and the Delete button.
    std::string buttons() const {
        return std::to_string(JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, 105))) +
               std::to_string(JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, 106)));
    }

    // Takes a selected row; the two names, or "(refused)" with both fields empty.
    std::string taken(const std::string& row, unsigned long mode) {
        send(LB_RESETCONTENT);
        send(LB_ADDSTRING, 0, row.c_str());
        send(LB_SETCURSEL, 0);
        std::memset(ins.dataSourceName, 'x', sizeof ins.dataSourceName);
        std::memset(ins.driverName, 'x', sizeof ins.driverName);
        const unsigned int result = ins.SaveSelectedLBItem(dialog, kList, mode);
        EXPECT_EQ(ins.selectedIndex, 0);
        EXPECT_EQ(ins.dataSourceName[49], '\0');
        EXPECT_EQ(ins.driverName[49], '\0');
        if (result == 1) {
            EXPECT_STREQ(ins.dataSourceName, "");
            EXPECT_STREQ(ins.driverName, "");
            return "(refused)";
        }
        EXPECT_EQ(result, 0U);
        return std::string(ins.dataSourceName) + "|" + ins.driverName;
    }

    const TestHome home;
    OdbcIns ins;
    const HWND dialog;
};

TEST_F(ListBoxMembers, FillAListWithTheDataSources) {
    home.put(".odbc.ini", "[ODBC Data Sources]\nA=One\nB=\n");
    home.put(".odbcinst.ini", "[Default]\nDriver=Two\n");
    send(LB_ADDSTRING, 0, "old");
    EXPECT_EQ(ins.PopulateLB(dialog, kList, 1, nullptr), 0);
    EXPECT_EQ(rows(), "[A (One)];B ();Default (Two);");
    EXPECT_EQ(buttons(), "11");
    EXPECT_EQ(ins.FillLB(dialog, kList, 1, nullptr), 0);
    EXPECT_EQ(send(LB_GETCOUNT), 6);
}

TEST_F(ListBoxMembers, GreyTheButtonsOfAnEmptyList) {
    EXPECT_EQ(ins.PopulateLB(dialog, kList, 1, nullptr), 0);
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(send(LB_GETCURSEL), LB_ERR);
    EXPECT_EQ(buttons(), "00");
}

TEST_F(ListBoxMembers, FillAListWithTheKeysOfASection) {
    home.put(".odbcinst.ini", "[ODBC Drivers]\nOne=Installed\nTwo\nThree = x\n[ODBC Translators]\nT=1\n[Empty]\n");
    struct Row {
        const char *section, *rows;
    };
    for (const Row& row : {Row{"ODBC Drivers", "One;Two;Three;"}, Row{"ODBC Translators", "<No Translator>;T;"},
                           Row{"odbc translators", "T;"}, Row{"Empty", ""}, Row{"Absent", ""}}) {
        SCOPED_TRACE(row.section);
        EXPECT_EQ(ins.PopulateLB(dialog, kList, 2, bytes(row.section)), 0);
        EXPECT_EQ(rows(), row.rows);
    }
    EXPECT_EQ(ins.PopulateLB(dialog, kList, 2, nullptr), 0);
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(buttons(), "11");
}

// 1024 bytes hold the first name, its NUL, a name of 22 bytes and its NUL.
TEST_F(ListBoxMembers, LeaveOutTheNameThatDoesNotFitWhole) {
    const std::string first(1000, 'a');
    for (const char* section : {"ODBC Drivers", "ODBC Translators"}) {
        const std::string none = section[5] == 'T' ? "<No Translator>;" : "";
        for (const std::size_t size : {21U, 22U, 23U, 24U, 70000U}) {
            SCOPED_TRACE(size);
            const std::string second(size, 'b');
            home.put(".odbcinst.ini", "[" + std::string(section) + "]\n" + first + "=x\n" + second + "=x\nThird=x\n");
            EXPECT_EQ(ins.PopulateLB(dialog, kList, 2, bytes(section)), 0);
            EXPECT_EQ(rows(), none + first + ";" + (size <= 22 ? second + ";" : ""));
        }
        home.put(".odbcinst.ini", "[" + std::string(section) + "]\n" + std::string(1024, 'a') + "=x\n");
        EXPECT_EQ(ins.PopulateLB(dialog, kList, 2, bytes(section)), 0);
        EXPECT_EQ(rows(), none);
    }
}

TEST_F(ListBoxMembers, OfferNoTranslatorWhereThereIsNone) {
    EXPECT_EQ(ins.PopulateLB(dialog, kList, 2, bytes("ODBC Translators")), 0);
    EXPECT_EQ(rows(), "<No Translator>;");
}

TEST_F(ListBoxMembers, OnlyEmptyTheListInAnUnknownMode) {
    for (const unsigned long mode : {0UL, 3UL, 99UL}) {
        send(LB_ADDSTRING, 0, "old");
        EXPECT_EQ(ins.PopulateLB(dialog, kList, mode, bytes("ODBC Drivers")), 0);
        EXPECT_EQ(rows(), "");
        EXPECT_EQ(ins.FillLB(dialog, kList, mode, bytes("ODBC Drivers")), 0);
        EXPECT_EQ(rows(), "");
    }
}

TEST_F(ListBoxMembers, TakeADataSourceApartFromItsEnd) {
    struct Row {
        const char *row, *taken;
    };
    for (const Row& row :
         {Row{"Sales (Sample)", "Sales|Sample"}, Row{"A (B (C) D)", "A|B (C) D"}, Row{"A (x) (y)", "A (x)|y"},
          Row{"A    (y)", "A|y"}, Row{"A(y)", "A|y"}, Row{"(y)", "|y"}, Row{" (y)", " |y"}, Row{"   (y)", " |y"},
          Row{"A ()", "A|"}, Row{"A (y) z", "A|y"}, Row{"no driver", "(refused)"}, Row{"", "(refused)"},
          Row{"a) (b", "(refused)"}, Row{"a (b))", "(refused)"}, Row{"a )", "(refused)"}, Row{"a (", "(refused)"}}) {
        SCOPED_TRACE(row.row);
        EXPECT_EQ(taken(row.row, 1), row.taken);
    }
}

TEST_F(ListBoxMembers, TakeADriverAsItStands) {
    for (const char* row : {"Sample", "A (B)", " blanks ", "("})
        EXPECT_EQ(taken(row, 0), std::string("|") + row);
    EXPECT_EQ(taken("Sample", 2), "(refused)");
}

TEST_F(ListBoxMembers, RefuseANameThatDoesNotFitItsField) {
    const std::string fits(49, 'n');
    const std::string tooLong(50, 'n');
    EXPECT_EQ(taken(fits, 0), "|" + fits);
    EXPECT_EQ(taken(tooLong, 0), "(refused)");
    EXPECT_EQ(taken(fits + " (" + fits + ")", 1), fits + "|" + fits);
    EXPECT_EQ(taken(tooLong + " (d)", 1), "(refused)");
    EXPECT_EQ(taken("n (" + tooLong + ")", 1), "(refused)");
    EXPECT_EQ(taken(std::string(70000, 'n') + " (d)", 1), "(refused)");
}

TEST_F(ListBoxMembers, TakeNothingWhenNothingIsSelected) {
    send(LB_ADDSTRING, 0, "Sales (Sample)");
    EXPECT_EQ(ins.SaveSelectedLBItem(dialog, kList, 1), 1U);
    EXPECT_EQ(ins.selectedIndex, -1);
    EXPECT_STREQ(ins.dataSourceName, "");
    for (const unsigned long mode : {0UL, 1UL}) {
        EXPECT_EQ(ins.SaveSelectedLBItem(0, kList, mode), 1U) << mode;
        EXPECT_EQ(ins.SaveSelectedLBItem(dialog + 999, kList, mode), 1U) << mode;
        EXPECT_EQ(ins.SaveSelectedLBItem(dialog, 999, mode), 1U) << mode;
    }
}

}  // namespace

}  // namespace jx::test
