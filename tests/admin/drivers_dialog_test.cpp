// The ODBC Drivers dialog, driven by every path.
#include <sys/stat.h>

#include <cstring>

#include "dialog_fixture.h"

namespace jx::test {

namespace {

class DriversDialog : public DialogTest {
protected:
    DriversDialog() {
        home.put("a.so", "library");
        home.put("a-setup.so", "library");
        home.put(".odbcinst.ini",
                 "[ODBC Drivers]\nSample=Installed\nSample Two=Installed\nBare=Installed\n\n[Sample]\n" +
                     ("Driver=" + home.file("a.so")) + "\nSetup=" + home.file("a-setup.so") +
                     "\n\n[Sample Two]\nDriver=/nowhere/b.so\nSetup=/nowhere/b-setup.so\n\n[Bare]\nX=1\n");
        home.put(".odbc.ini",
                 "[ODBC Data Sources]\nOne=Sample\nTwo=Sample Two\nThree=Bare\nFour=\n\n[One]\nA=1\n\n[Two]\nA=2\n\n"
                 "[Three]\nA=3\n\n[Four]\nA=4\n");
    }

    int run() { return jxDllDialog(0, JxDriversDialog, OdbcDriversDlgProc, &ins); }

    static std::string question(const char* driver) { return plain(169) + "|" + filled(170, driver) + "|52"; }

    static std::string notDeleted(const std::string& path, int reason) {
        return plain(168) + "|" + filled(167, path + ": " + std::strerror(reason)) + "|0";
    }

    OdbcIns ins;
};

TEST_F(DriversDialog, ListsTheInstalledDrivers) {
    EXPECT_EQ(shownBy([&] { return run(); }, press(JxCloseButton)),
              "\"ODBC Drivers\" centered\n  label 118 \"&Installed drivers:\"\n  list 117 focus\n    > Sample\n"
              "      Sample Two\n      Bare\n  button 119 \"&Add...\"\n  button 116 \"D&elete...\"\n"
              "  button 104 \"&Close\" default\n");
}

TEST_F(DriversDialog, WithoutDriversGreysDelete) {
    home.put(".odbcinst.ini", "");
    ScriptedUser user{look(), refused(press(JxDeleteDriverButton)), key(JXW_KEY_ESCAPE)};
    run();
    EXPECT_NE(user.dumps[0].find("button 116 \"D&elete...\" grey"), std::string::npos);
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(DriversDialog, RemovesADriverWithItsFilesAndEveryDataSourceWhoseDriverHoldsItsName) {
    ScriptedUser user({press(JxDeleteDriverButton), look()}, {IDYES});
    run();
    EXPECT_EQ(user.boxes, Texts{question("Sample")});
    EXPECT_EQ(home.names(), (std::vector<std::string>{".odbc.ini", ".odbcinst.ini"}));
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Drivers]\nSample Two=Installed\nBare=Installed\n\n[Sample Two]\nDriver=/nowhere/b.so\n"
              "Setup=/nowhere/b-setup.so\n\n[Bare]\nX=1\n");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nThree=Bare\nFour=\n\n[Three]\nA=3\n\n[Four]\nA=4\n");
    EXPECT_EQ(listIn(user.dumps[0]), "  list 117\n    > Sample Two\n      Bare\n");
}

TEST_F(DriversDialog, RemovesNothingUnlessTheAnswerIsYes) {
    const std::string before = home.text(".odbcinst.ini") + home.text(".odbc.ini");
    for (const unsigned int answer : {unsigned{IDNO}, unsigned{IDCANCEL}, unsigned{IDOK}, 0U}) {
        ScriptedUser user({press(JxDeleteDriverButton)}, {answer});
        run();
        EXPECT_EQ(home.text(".odbcinst.ini") + home.text(".odbc.ini"), before) << answer;
        EXPECT_EQ(home.text("a.so"), "library");
    }
}

TEST_F(DriversDialog, RemovesNothingWithoutASelection) {
    ScriptedUser user{selectRow(JxDriversList, -1), press(JxDeleteDriverButton)};
    run();
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(DriversDialog, RemovesNothingForAnEmptyRow) {
    const std::string before = home.text(".odbcinst.ini");
    ScriptedUser user{call([](HWND open) {
                          JXW_SendDlgItemMessage(open, JxDriversList, LB_INSERTSTRING, 0,
                                                 reinterpret_cast<uintptr_t>(""));
                      }),
                      selectRow(JxDriversList, 0), press(JxDeleteDriverButton)};
    run();
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(home.text(".odbcinst.ini"), before);
}

TEST_F(DriversDialog, RemovesADriverWithoutASetupLibraryWithoutAMessage) {
    home.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n[D]\nDriver=" + home.file("a.so") + "\n");
    ScriptedUser user({press(JxDeleteDriverButton)}, {IDYES});
    run();
    EXPECT_EQ(user.boxes, Texts{question("D")});
    EXPECT_EQ(home.text("a.so"), "(absent)");
    EXPECT_EQ(home.text("a-setup.so"), "library");
}

TEST_F(DriversDialog, DoesNotDeleteASetupLibraryWhosePathMayHaveBeenCutAndSaysNothing) {
    const std::string folder = home.file("");
    const std::string name(199 - folder.size(), 'n');
    home.put(name, "precious");
    home.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n[D]\nSetup=" + folder + name + "nnn\n");
    ScriptedUser user({press(JxDeleteDriverButton)}, {IDYES});
    run();
    EXPECT_EQ(home.text(name), "precious");
    EXPECT_EQ(user.boxes, Texts{question("D")});
}

TEST_F(DriversDialog, NamesADirectoryThatItCouldNotDelete) {
    mkdir(home.file("folder").c_str(), 0700);
    home.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n[D]\nDriver=" + home.file("folder") + "\n");
    ScriptedUser user({press(JxDeleteDriverButton)}, {IDYES, IDOK});
    run();
    ASSERT_EQ(user.boxes.size(), 2U);
    EXPECT_NE(user.boxes[1].find(home.file("folder") + ": "), std::string::npos);
    EXPECT_EQ(home.names(), (std::vector<std::string>{".odbc.ini", ".odbcinst.ini", "a-setup.so", "a.so", "folder"}));
}

TEST_F(DriversDialog, SaysWhichFileIsStillThereAndWhyButNotOfTheSetupLibrary) {
    ScriptedUser user({selectRow(JxDriversList, 1), press(JxDeleteDriverButton)}, {IDYES, IDOK});
    run();
    EXPECT_EQ(user.boxes, (Texts{question("Sample Two"), notDeleted("/nowhere/b.so", ENOENT)}));
    EXPECT_EQ(home.text(".odbcinst.ini").find("Sample Two"), std::string::npos);
}

TEST_F(DriversDialog, RemovesADriverThatNamesNoFilesWithoutAMessage) {
    ScriptedUser user({selectRow(JxDriversList, 2), press(JxDeleteDriverButton)}, {IDYES});
    run();
    EXPECT_EQ(user.boxes, Texts{question("Bare")});
    EXPECT_EQ(home.text(".odbcinst.ini").find("Bare"), std::string::npos);
}

TEST_F(DriversDialog, DoesNotDeleteAFileWhosePathMayHaveBeenCut) {
    std::string folder = home.file("");
    for (const std::size_t length : {std::size_t{197}, std::size_t{198}, std::size_t{199}, std::size_t{200}}) {
        SCOPED_TRACE(length);
        ASSERT_LT(folder.size(), length);
        const std::string name(std::min<std::size_t>(length, 199) - folder.size(), 'n');
        home.put(name, "precious");
        home.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n[D]\nDriver=" + folder +
                                      std::string(length - folder.size(), 'n') + "\n");
        ScriptedUser user({press(JxDeleteDriverButton)}, {IDYES, IDOK});
        run();
        EXPECT_EQ(home.text(name), length < 199 ? "(absent)" : "precious");
        EXPECT_EQ(user.boxes.size(), length < 199 ? 1U : 2U);
        if (length >= 199) {
            EXPECT_EQ(user.boxes.back(), notDeleted(folder + name, ENAMETOOLONG));
        }
    }
}

TEST_F(DriversDialog, OfADriverNamedLikeAListOnlyTheEntryGoes) {
    const std::string rest = "[ODBC Translators]\nLatin=Installed\nDriver=" + home.file("a.so") + "\n";
    home.put(".odbcinst.ini", "[ODBC Drivers]\nodbc translators=Installed\n" + rest);
    ScriptedUser user({press(JxDeleteDriverButton)}, {IDYES});
    run();
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\n" + rest);
    EXPECT_EQ(home.text("a.so"), "library");
}

TEST_F(DriversDialog, AListThatNamesASettingAsADataSourceKeepsIt) {
    const std::string before = "[ODBC Data Sources]\nODBC=D\n[ODBC]\nTrace=1\n";
    home.put(".odbc.ini", before);
    home.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n");
    ScriptedUser user({press(JxDeleteDriverButton)}, {IDYES});
    run();
    EXPECT_EQ(home.text(".odbc.ini"), before);
}

TEST_F(DriversDialog, DeletingTheLastOneGreysTheButton) {
    home.put(".odbcinst.ini", "[ODBC Drivers]\nBare=Installed\n");
    ScriptedUser user({press(JxDeleteDriverButton), look()}, {IDYES});
    run();
    EXPECT_NE(user.dumps[0].find("button 116 \"D&elete...\" grey"), std::string::npos);
    EXPECT_EQ(listIn(user.dumps[0]), "  list 117\n");
}

// Names of nine bytes and their NULs up to so many bytes, and then one more.
std::string namesUpTo(int bytes, const std::string& last) {
    std::string list;
    for (int used = 0; used + 10 <= bytes; used += 10)
        list += "Driver" + std::to_string(100 + used / 10) + "=Installed\n";
    return list + last + "=Installed\n";
}

TEST_F(DriversDialog, NeitherShowsNorActsOnANameThatDoesNotFitTheList) {
    struct Row {
        std::size_t length;
        bool shown;
    };
    // 99 names take 990 bytes of the list's 999; each name needs one more for its NUL.
    for (const Row& row : {Row{7, true}, Row{8, true}, Row{9, false}, Row{10, false}, Row{200, false}}) {
        SCOPED_TRACE(row.length);
        const std::string last(row.length, 'n');
        home.put(".odbcinst.ini", "[ODBC Drivers]\n" + namesUpTo(990, last));
        ScriptedUser user{look()};
        run();
        EXPECT_NE(user.dumps[0].find("      Driver198\n"), std::string::npos);
        EXPECT_EQ(user.dumps[0].find("      nnnnnnn") != std::string::npos, row.shown) << user.dumps[0];
    }
}

TEST_F(DriversDialog, LeavesADataSourceAloneWhoseNameDoesNotFitTheList) {
    for (const std::size_t length : {std::size_t{8}, std::size_t{9}, std::size_t{20}}) {
        SCOPED_TRACE(length);
        const std::string last(length, 'n');
        // If the longer name were cut, it would be the name of this data source.
        const std::string other = "[" + std::string(8, 'n') + (length == 8 ? "x" : "") + "]\nA=1\n";
        home.put(".odbc.ini", "[ODBC Data Sources]\n" + namesUpTo(990, last) + other);
        SQLWritePrivateProfileString("ODBC Data Sources", last.c_str(), "Bare", ".odbc.ini");
        ScriptedUser user({selectRow(JxDriversList, 2), press(JxDeleteDriverButton)}, {IDYES});
        home.put(".odbcinst.ini", "[ODBC Drivers]\nSample=1\nSample Two=1\nBare=1\n");
        run();
        EXPECT_EQ(home.text(".odbc.ini").find(last + "=Bare") != std::string::npos, length != 8);
        EXPECT_NE(home.text(".odbc.ini").find("Driver198"), std::string::npos);
        EXPECT_NE(home.text(".odbc.ini").find(other), std::string::npos);
    }
}

TEST_F(DriversDialog, ShowsNothingWhenTheFirstNameFillsTheListAlone) {
    home.put(".odbcinst.ini", "[ODBC Drivers]\n" + std::string(2000, 'n') + "=Installed\n");
    ScriptedUser user{look()};
    run();
    EXPECT_EQ(listIn(user.dumps[0]), "  list 117 focus\n");
    EXPECT_NE(user.dumps[0].find("button 116 \"D&elete...\" grey"), std::string::npos);
}

TEST_F(DriversDialog, ADataSourceWithoutADriverSurvivesEveryRemoval) {
    ScriptedUser user({press(JxDeleteDriverButton), press(JxDeleteDriverButton), press(JxDeleteDriverButton)},
                      {IDYES, IDYES, IDOK, IDYES});
    run();
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nFour=\n\n[Four]\nA=4\n");
    EXPECT_EQ(home.text(".odbcinst.ini").find("Installed"), std::string::npos);
}

TEST_F(DriversDialog, SaysBeforeItAsksThatFilesAreDeleted) {
    EXPECT_NE(plain(170).find("library files are deleted from the disk"), std::string::npos);
}

TEST_F(DriversDialog, ADoubleClickDoesNothing) {
    ScriptedUser user{doubleClick(JxDriversList, 0), press(JxCloseButton)};
    run();
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(DriversDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 1, 2, 117, 118, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 2 << 16), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    run();
}

}  // namespace

}  // namespace jx::test
