// Changing one of the files: under its turn, read back before it is written, shown instead of written when asked.
#pragma once

#include <jxini.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/cli/ini_view.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

// The path a file name of jxini.h stands for; the name itself when there is none.
std::string pathOf(const char* file);

// Tells the store's last failure and gives its exit code: 8 when the turn was not obtained, 5 when a name or value was
// refused, else 7.
ExitCode reportFileTrouble(const Session& session);

// Reads a file; when that fails the failure is told and code set to its exit code.
std::optional<IniView> readFile(const Session& session, const char* file, ExitCode& code);

// FileChange: open, look at before(), set and erase, then finish. With --dry-run or --check nothing is ever written.
// While it lives other writers of the file wait. The calls return false or a code other than done after they told what
// is wrong; nothing is written then.
class FileChange {
public:
    // Tells why and leaves isOpen() false when the file cannot be had.
    FileChange(const Session& session, const char* file);

    bool isOpen() const { return before_.has_value(); }

    // The exit code of what went wrong.
    ExitCode trouble() const { return trouble_; }

    const IniView& before() const { return *before_; }

    // Refused (5) is what the file could not give back as it is, blanks at its ends for one.
    bool set(const std::string& section, const std::string& key, const std::string& value);

    // No trouble when there is none.
    bool erase(const std::string& section, const std::string& key);
    bool eraseSection(const std::string& section);

    // Whether the text is another than before, also after finish.
    bool changes() const { return changes_; }

    // Writes; with --dry-run or --check it does not. done also when nothing changes.
    ExitCode finish();

    // What changes, with secrets masked unless asked for; only with --dry-run and after finish.
    const std::string& difference() const { return difference_; }

    const std::string& file() const { return file_; }

private:
    struct Discard {
        void operator()(JxIniChange* change) const { jxIniDiscard(change); }
    };
    struct Wanted {
        std::string section, key, value;
    };

    bool refuse(const std::string& what, const std::string& text, const std::string& why);
    bool apply(const std::string& section, const char* key, const char* value);
    bool readsBack();
    void preview();

    const Session& session_;
    std::string file_;
    std::unique_ptr<JxIniChange, Discard> change_;
    std::optional<IniView> before_;
    std::vector<Wanted> wanted_;
    std::string difference_;
    bool changes_ = false;
    ExitCode trouble_ = ExitCode::done;
};

// Why a text cannot be a section name, a key or a value of a file; empty when it can.
std::string whyNoSection(std::string_view name);
std::string whyNoKey(std::string_view key);
std::string whyNoValue(std::string_view value);

}  // namespace jx::admin
