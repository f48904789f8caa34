// SQLWritePrivateProfileString: which file it changes, what it leaves, what it refuses.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "installer_home.h"

using namespace jx::test;

namespace {

BOOL write(const char* section, const char* key, const char* value, const char* file = "odbc.ini") {
    return SQLWritePrivateProfileString(section, key, value, file);
}

TEST(ProfileWriting, ANewKeyAndANewSectionGoToTheUsersFileAndTheRestStaysByteForByte) {
    const InstallerHome home{{kUserSources, "; mine\r\n[A]\r\nx = 1\r\n"}};
    EXPECT_EQ(write("A", "y", "2"), TRUE);
    EXPECT_EQ(home.text(kUserSources), "; mine\r\n[A]\r\nx = 1\r\ny=2\r\n");
    EXPECT_EQ(write("B", "z", "\xC3\xA9"), TRUE);
    EXPECT_EQ(home.text(kUserSources), "; mine\r\n[A]\r\nx = 1\r\ny=2\r\n\r\n[B]\r\nz=\xC3\xA9\r\n");
    EXPECT_EQ(write("A", "x", nullptr), TRUE);
    EXPECT_EQ(write("B", nullptr, nullptr), TRUE);
    EXPECT_EQ(value("A", "y"), "2");
    EXPECT_EQ(listed(nullptr), "A|");
    EXPECT_EQ(home.text(kSystemSources), "(absent)");
}

TEST(ProfileWriting, ANewFileOfTheUserIsPrivateAndOneOfTheSystemIsReadByAll) {
    const InstallerHome home;
    const mode_t mask = umask(0022);
    EXPECT_EQ(write("A", "k", "v"), TRUE);
    SQLSetConfigMode(ODBC_SYSTEM_DSN);
    EXPECT_EQ(write("A", "k", "v"), TRUE);
    EXPECT_EQ(write("D", "k", "v", "odbcinst.ini"), TRUE);
    umask(mask);
    const auto modeOf = [&](const char* name) {
        struct stat state {};
        EXPECT_EQ(stat(home.file(name).c_str(), &state), 0) << name;
        return state.st_mode & 07777U;
    };
    EXPECT_EQ(modeOf(kUserSources), 0600U);
    EXPECT_EQ(modeOf(kSystemSources), 0644U);
    EXPECT_EQ(modeOf(kSystemDrivers), 0644U);
}

TEST(ProfileWriting, TheModeChoosesTheFileOfDataSources) {
    struct Row {
        UWORD mode;
        const char* written;
        const char* other;
    };
    for (const Row& row :
         {Row{ODBC_BOTH_DSN, kUserSources, kSystemSources}, Row{ODBC_USER_DSN, kUserSources, kSystemSources},
          Row{ODBC_SYSTEM_DSN, kSystemSources, kUserSources}}) {
        SCOPED_TRACE(row.mode);
        const InstallerHome home;
        SQLSetConfigMode(row.mode);
        EXPECT_EQ(write("A", "k", "v"), TRUE);
        EXPECT_EQ(home.text(row.written), "[A]\nk=v\n");
        EXPECT_EQ(home.text(row.other), "(absent)");
    }
}

TEST(ProfileWriting, AKeyOfADataSourceThatOnlyTheSystemHasIsRefusedInModeBoth) {
    const InstallerHome home{{kSystemSources, "[Sales]\nServer=db\n"}};
    EXPECT_EQ(write("Sales", "Server", "b"), FALSE);
    EXPECT_EQ(record(1), "11: Data source \"Sales\" was not written: it stands in the system's file " +
                             home.file(kSystemSources) + " only, and a key in the user's file would hide all of it.");
    EXPECT_EQ(write("sales", nullptr, nullptr), FALSE);
    EXPECT_EQ(home.text(kUserSources), "(absent)");
    SQLSetConfigMode(ODBC_USER_DSN);
    EXPECT_EQ(write("Sales", "Server", "b"), TRUE) << "who asks for the user's file gets it";
    EXPECT_EQ(value("Sales", "Server"), "b");
    EXPECT_EQ(home.text(kSystemSources), "[Sales]\nServer=db\n");
}

TEST(ProfileWriting, WhereTheSystemsFileCannotBeReadNothingIsWrittenThatCouldHideADataSource) {
    const InstallerHome home;
    std::filesystem::create_directory(home.file(kSystemSources));
    EXPECT_EQ(write("Sales", "Server", "b"), FALSE);
    EXPECT_TRUE(record(1).starts_with("11: The key \"Server\" of section \"Sales\"")) << record(1);
    EXPECT_EQ(home.text(kUserSources), "(absent)");
}

TEST(ProfileWriting, ListsSettingsAndNewSectionsAreNotConcerned) {
    const InstallerHome home{{kSystemSources, "[ODBC Data Sources]\nSales=PG\n[ODBC]\nTrace=0\n"}};
    EXPECT_EQ(write("ODBC Data Sources", "Mine", "PG"), TRUE);
    EXPECT_EQ(write("ODBC", "Trace", "1"), TRUE);
    EXPECT_EQ(write("New", "k", "v"), TRUE);
    EXPECT_EQ(home.text(kUserSources), "[ODBC Data Sources]\nMine=PG\n\n[ODBC]\nTrace=1\n\n[New]\nk=v\n");
}

TEST(ProfileWriting, AWriteToTheDriversGoesWhereTheSectionAnswersElseToTheSystemWhateverTheMode) {
    for (const UWORD mode : {UWORD{ODBC_BOTH_DSN}, UWORD{ODBC_USER_DSN}, UWORD{ODBC_SYSTEM_DSN}}) {
        SCOPED_TRACE(mode);
        const InstallerHome home{{kUserDrivers, "[Mine]\nDriver=a\n"}, {kSystemDrivers, "[Mine]\nDriver=b\n[PG]\n"}};
        SQLSetConfigMode(mode);
        EXPECT_EQ(write("mine", "k", "v", "odbcinst.ini"), TRUE);
        EXPECT_EQ(write("PG", "k", "v", "ODBCINST.INI"), TRUE);
        EXPECT_EQ(write("New", "k", "v", ".odbcinst.ini"), TRUE);
        EXPECT_EQ(home.text(kUserDrivers), "[Mine]\nDriver=a\nk=v\n");
        EXPECT_EQ(home.text(kSystemDrivers), "[Mine]\nDriver=b\n[PG]\nk=v\n\n[New]\nk=v\n");
    }
}

struct Refused {
    const char* what;
    const char* section;
    const char* key;
    const char* value;
    const char* file;
    DWORD code;
};

TEST(ProfileWriting, WhatCannotBeStoredIsRefusedWithItsReasonAndChangesNothing) {
    const Refused rows[] = {
        {"no file", "S", "k", "v", nullptr, ODBC_ERROR_INVALID_NAME},
        {"an empty file name", "S", "k", "v", "", ODBC_ERROR_INVALID_NAME},
        {"a relative file", "S", "k", "v", "other.ini", ODBC_ERROR_INVALID_PATH},
        {"a line break in a value", "S", "k", "a\nb", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"a line break in a key", "S", "k\n", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"= in a key", "S", "a=b", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"[ before a key", "S", "[k", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"; before a key", "S", ";k", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"no section", nullptr, "k", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"an empty section", "", "k", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"a section with a line break", "S\n[T]", "k", "v", "odbc.ini", ODBC_ERROR_REQUEST_FAILED},
        {"not UTF-8", "S", "k", "\xFF", "odbc.ini", ODBC_ERROR_INVALID_STR},
        {"a file not UTF-8", "S", "k", "v", "/tmp/\xFF", ODBC_ERROR_INVALID_STR},
    };
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.what);
        const InstallerHome home;
        EXPECT_EQ(write(row.section, row.key, row.value, row.file), FALSE);
        EXPECT_EQ(firstCode(), row.code) << record(1);
        EXPECT_EQ(recordCount(), 1);
        EXPECT_EQ(home.text(kUserSources), "(absent)");
    }
}

TEST(ProfileWriting, TheRecordNamesSectionKeyFileAndTheSystemsReason) {
    const InstallerHome home;
    std::filesystem::create_directory(home.file(kUserSources));
    EXPECT_EQ(write("Sales", "Server", "db"), FALSE);
    const std::string text = record(1);
    for (const std::string& part :
         {std::string("11: "), std::string("Sales"), std::string("Server"), home.file(kUserSources)})
        EXPECT_NE(text.find(part), std::string::npos) << text;
    EXPECT_EQ(write("Sales", "Server", "db", (home.file("absent") + "/x.ini").c_str()), FALSE);
    EXPECT_NE(record(1).find("No such file or directory"), std::string::npos) << record(1);
}

TEST(ProfileWriting, WIsTheSame) {
    const InstallerHome home;
    EXPECT_EQ(SQLWritePrivateProfileStringW(wide(u"B\u00FCcher"), wide(u"Ort"), wide(u"K\u00F6ln \U0001F600"),
                                            wide(u"odbc.ini")),
              TRUE);
    EXPECT_EQ(home.text(kUserSources),
              "[B\xC3\xBC"
              "cher]\nOrt=K\xC3\xB6ln \xF0\x9F\x98\x80\n");
    const char16_t half[] = {u'v', 0xDFFF, 0};
    EXPECT_EQ(SQLWritePrivateProfileStringW(wide(u"S"), wide(u"k"), wide(half), wide(u"odbc.ini")), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
    EXPECT_EQ(SQLWritePrivateProfileStringW(wide(u"B\u00FCcher"), nullptr, nullptr, wide(u"odbc.ini")), TRUE);
    EXPECT_EQ(listed(nullptr), "");
}

TEST(ProfileWriting, DeletingAKeyDeletesItsReferencesInAnyCase) {
    const InstallerHome home{{kUserSources, "[S]\nPWD@file=/a\npwd@ENV=B\nPwd@Credential=c\nPWDX@file=/d\nk=1\n"}};
    EXPECT_EQ(write("S", "PWD", nullptr), TRUE);
    EXPECT_EQ(home.text(kUserSources), "[S]\nPWDX@file=/d\nk=1\n");
}

TEST(ProfileWriting, DeletingWhatIsNotThereSucceedsAndMakesNoFile) {
    const InstallerHome home;
    EXPECT_EQ(write("S", "k", nullptr), TRUE);
    EXPECT_EQ(write("S", nullptr, nullptr), TRUE);
    EXPECT_EQ(home.text(kUserSources), "(absent)");
}

}  // namespace
