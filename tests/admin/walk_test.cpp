// A walk through all dialogs, which compares each with its picture in docs/dialogs.md. With JX_UPDATE_WALK set it
// updates the pictures instead.
#include <jxmemory.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "admin/about_dialog.h"
#include "config/translators.h"
#include "dialog_dump.h"
#include "dialog_fixture.h"
#include "setup/setup_template.h"

namespace jx::test {

namespace {

using Pictures = std::map<std::string, std::string>;

// A message box as a picture, from the note of a ScriptedUser.
std::string pictureOf(const std::string& box) {
    const std::size_t title = box.find('|');
    const std::size_t style = box.rfind('|');
    std::string text = box.substr(title + 1, style - title - 1);
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 3)
        text.replace(at, 1, "\n  ");
    const bool asks = (std::atoi(box.c_str() + style + 1) & MB_YESNO) != 0;
    return "\"" + box.substr(0, title) + "\"\n  " + text + "\n" +
           (asks ? "  button \"Yes\"\n  button \"No\"\n" : "  button \"OK\"\n");
}

std::string readAll(const char* path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

constexpr std::string_view kFence = "```text ";

// The pictures of a document: fenced blocks whose fence names them.
Pictures picturesIn(const std::string& document) {
    Pictures found;
    std::istringstream lines(document);
    std::string* inside = nullptr;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(kFence, 0) == 0)
            inside = &found[line.substr(kFence.size())];
        else if (line == "```")
            inside = nullptr;
        else if (inside != nullptr)
            *inside += line + "\n";
    }
    return found;
}

// The document with other pictures under the same names.
std::string withPictures(const std::string& document, Pictures& pictures) {
    std::string result;
    std::istringstream lines(document);
    bool skipping = false;
    for (std::string line; std::getline(lines, line);) {
        skipping = skipping && line != "```";
        if (!skipping)
            result += line + "\n";
        if (line.rfind(kFence, 0) == 0) {
            result += pictures[line.substr(kFence.size())];
            skipping = true;
        }
    }
    return result;
}

class Walk : public DialogTest {
protected:
    Walk() {
        home.put(
            ".odbcinst.ini",
            std::string("[ODBC Drivers]\nSample Driver=Installed\n\n[Sample Driver]\nDriver=/opt/sample/libsample.so\n"
                        "Setup=") +
                JX_SETUP_LIBRARY + "\n\n[ODBC Translators]\nLatin to Greek=Installed\n");
        mkdir(home.file("kit").c_str(), 0700);
        home.put("kit/odbc.inf",
                 "[ODBC Drivers]\n\"Sample Driver\"=\n\"Other Driver\"=\n\n[Sample Driver]\n"
                 "\"Driver\"=1,libsample.so,,,,95-06-14,,,,,,,,,,81920,,,,3.51,\n");
    }

    // Takes a picture.
    Action see(const char* name) {
        return [this, name](ScriptedUser&, HWND dialog) {
            seen[name] = dumpDialog(dialog);
            return 1;
        };
    }

    void walkDataSources();
    void walkDrivers();
    void walkRest();

    Pictures seen;
};

void Walk::walkDataSources() {
    ScriptedUser user({see("data-sources-empty"),
                       press(JxAddButton),
                       selectRow(JxAddDataSourceList, 0),
                       see("add-data-source"),
                       press(IDOK),
                       type(setup::kNameEdit, "Sales"),
                       type(setup::kKeyEdit, "Server"),
                       type(setup::kValueEdit, "db.example"),
                       press(setup::kAddButton),
                       type(setup::kKeyEdit, "PWD"),
                       type(setup::kHiddenEdit, "hush"),
                       press(setup::kAddButton),
                       selectRow(setup::kKeyList, 1),
                       see("data-source-setup"),
                       press(IDOK),
                       see("data-sources"),
                       press(JxDeleteButton),
                       press(JxOptionsButton),
                       see("options"),
                       press(IDCANCEL),
                       press(JxCloseButton)},
                      {IDNO});
    SQLManageDataSources(0);
    EXPECT_EQ(user.actionsLeft(), 0U);
    ASSERT_EQ(user.boxes.size(), 1U);
    seen["delete-data-source"] = pictureOf(user.boxes[0]);
}

void Walk::walkDrivers() {
    ScriptedUser user({press(JxDriversButton), see("drivers"), press(JxDeleteDriverButton), press(JxAddDriverButton),
                       see("add-driver"), press(IDOK), type(JxDirectoryEdit, home.file("kit")), press(IDOK),
                       see("install-drivers"), press(JxAdvancedButton), see("advanced-options"),
                       press(JxVersionsButton), selectRow(JxVersionsList, 0), see("versions"), press(IDCANCEL),
                       press(IDCANCEL), press(IDCANCEL), press(JxCloseButton), press(JxCloseButton)},
                      {IDNO, IDYES});
    SQLManageDataSources(0);
    EXPECT_EQ(user.actionsLeft(), 0U);
    ASSERT_EQ(user.boxes.size(), 2U);
    seen["delete-driver"] = pictureOf(user.boxes[0]);
    seen["no-script"] = pictureOf(user.boxes[1]);
}

void Walk::walkRest() {
    OdbcIns ins;
    unsigned char name[kTranslatorNameSize] = "Latin to Greek";
    TranslatorChoice choice{name, &ins, 0};
    admin::AboutRecord about{};
    about.texts[0] = ramAllocStr(reinterpret_cast<const unsigned char*>("Sample Driver 3.51"));
    ScriptedUser user{see("select-translator"), press(IDOK), see("about"), press(IDOK)};
    jxDllDialog(0, JxSelectTranslatorDialog, SelectTranslatorDlgProc, &choice);
    jxDllDialog(0, JxAboutDialog, AboutDlgProc, &about);
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(Walk, SeesWhatTheDocumentShows) {
    walkDataSources();
    walkDrivers();
    walkRest();
    const std::string document = readAll(JX_DIALOG_DOCUMENT);
    if (std::getenv("JX_UPDATE_WALK") != nullptr) {
        std::ofstream(JX_DIALOG_DOCUMENT, std::ios::binary) << withPictures(document, seen);
        return;
    }
    const Pictures shown = picturesIn(document);
    for (const auto& [name, picture] : seen) {
        const auto found = shown.find(name);
        EXPECT_EQ(found != shown.end() ? found->second : "(not shown)", picture) << name;
    }
    for (const auto& [name, picture] : shown)
        EXPECT_TRUE(seen.contains(name)) << name << " is not part of the walk";
}

}  // namespace

}  // namespace jx::test
