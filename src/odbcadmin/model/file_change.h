// Changing one file: locked, composed in memory, read back, and only then written; or shown instead of written.
//
//     FileChange change(".odbc.ini", way);
//     change.set("Sales", "Server", "db2");
//     const ChangeResult result = change.finish();
//     if (result.reason)
//         ... nothing was written ...
#pragma once

#include <jxini.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "odbcadmin/model/config_file.h"
#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/model/reason.h"

namespace jx::model {

// Keys and values, in order.
using Pairs = std::vector<std::pair<std::string, std::string>>;

// ChangeWay: how changes are made.
struct ChangeWay {
    enum class Writing { now, never };
    enum class Secrets { masked, shown };
    enum class OpenSecrets { refused, allowed };  // new ones in a file of the system's that everybody may read

    Writing writing = Writing::now;
    Secrets secrets = Secrets::masked;  // in differences
    Scope scope = Scope::user;          // whose files ".odbc.ini" and ".odbcinst.ini" are
    OpenSecrets openSecrets = OpenSecrets::refused;

    // Calls wait, which may take seconds while another program has the file locked; the client can show that meanwhile.
    std::function<void(const std::string& path, const std::function<void()>& wait)> aroundWait =
        [](const std::string& /*path*/, const std::function<void()>& wait) { wait(); };
};

// A file that was changed, or would be.
struct ChangedFile {
    std::string path;
    std::string difference;  // a unified diff; only when nothing is written
};

// ChangeResult: what came of one or more changes. With a reason the change that gave it was not made; files are those
// that were changed before it.
struct ChangeResult {
    Reason reason = {};
    std::vector<ChangedFile> files = {};

    bool isDone() const { return !reason; }

    // This, and then what the next change gave.
    ChangeResult& add(ChangeResult next);
};

// FileChange: while it lives other writers of the file wait. The first thing that goes wrong stays: later calls do
// nothing, nothing is written, and finish gives the reason. Leaving scope without finish changes nothing. For one
// thread.
class FileChange {
public:
    // file is a name of jxini.h; ".odbc.ini" and ".odbcinst.ini" mean those of the way's scope. A new file of the
    // system's may be read by all. way must outlive the object.
    FileChange(const std::string& file, const ChangeWay& way);

    // The file when it was locked; an empty one when it could not be.
    const IniView& before() const { return before_; }

    // Stores a value exactly as given. Refused is what the file could not give back as it is, blanks at the ends for
    // one.
    void set(const std::string& section, const std::string& key, const std::string& value);
    void set(const std::string& section, const Pairs& pairs);

    // Nothing goes wrong when there is none.
    void erase(const std::string& section, const std::string& key);
    void eraseSection(const std::string& section);

    // Makes this the file's whole text, whatever stands in it.
    void replace(std::string_view text);

    // Gives up, if there is a reason to.
    void fail(Reason reason);

    const Reason& reason() const { return reason_; }

    // Writes, unless the way says never or nothing changes. Call it once, at the end.
    ChangeResult finish();

private:
    struct Discard {
        void operator()(JxIniChange* change) const { jxIniDiscard(change); }
    };
    struct Wanted {
        std::string section, key, value;
    };

    std::string path() const;
    void settle();
    void refuse(const std::string& what, const std::string& why);
    void refuseOpenSecret(const std::string& section, const std::string& key, const std::string& value);
    bool takesSection(const std::string& section);
    void remove(const std::string& section, const char* key);
    void forget(const std::function<bool(const Wanted&)>& isGone);
    void readBack();

    const ChangeWay& way_;
    std::string file_;  // what the store calls it
    bool isShared_;     // one of the system's two
    std::unique_ptr<JxIniChange, Discard> change_;
    IniView before_;
    std::vector<Wanted> wanted_;
    std::size_t settled_ = 0;  // how many of wanted_ the change has; the others wait, to be set all at once
    Reason reason_;
};

// Calls work, whose changes are then written together: when one of them is refused or a file cannot be locked, no file
// is written. files of the result are those that were written.
ChangeResult asOneChange(const ChangeWay& way, const std::function<ChangeResult()>& work);

// Why a value that a user gives is not taken for a secret: it is what a hidden one is shown as.
Reason whyHidden(const std::string& key, const std::string& value);

// A unified diff between two texts of a file.
std::string differenceOf(const std::string& path, std::string_view before, std::string_view after,
                         ChangeWay::Secrets secrets);

}  // namespace jx::model
