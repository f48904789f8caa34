// A change of one configuration file: several writes that reach it together or not at all.
//
//     const ChangeSubject sales{"Data source \"Sales\""};
//     return changeFile(place, sales, [&](FileChange& change) {
//         return change.set("Sales", nullptr, nullptr) && change.set("Sales", "Driver", library);
//     });
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <jxini.h>
#include <jxodbc3/odbcinst.h>
#include "api3/file_places.h"

namespace jx::api3 {

// FileText: a file's text at one moment.
// Failure  std::bad_alloc may be thrown.
class FileText {
public:
    explicit FileText(std::string_view bytes);

    bool hasSection(const std::string& section) const;
    std::optional<std::string> value(const std::string& section, const char* key) const;

private:
    struct Release {
        void operator()(JxIniText* text) const { jxIniRelease(text); }
    };

    std::unique_ptr<JxIniText, Release> text_;
};

// ChangeSubject: what a record says was not written, and its code.
struct ChangeSubject {
    std::string name;
    DWORD code = ODBC_ERROR_REQUEST_FAILED;
};

// FileChange: what the edits of a change see and do. Each of set and refuse gives false with a record posted; the
// sentence begins with the subject: "Data source "Sales" was not written to /etc/odbc.ini: ...".
class FileChange {
public:
    // Before any edit.
    FileText before() const;

    // A null value deletes the key, a null key the section.
    bool set(const std::string& section, const char* key, const char* value);

    // Always false: the edits end with it, and nothing is written.
    bool refuse(const std::string& why) const;

private:
    friend bool changeFile(const Place& place, const ChangeSubject& subject,
                           const std::function<bool(FileChange&)>& edit);

    enum class Kind { preview, real };

    FileChange(const Place& place, const ChangeSubject& subject) : place_(place), subject_(subject) {}

    bool begin(Kind kind);
    bool changesNothing() const;
    bool commit();

    struct Discard {
        void operator()(JxIniChange* change) const { jxIniDiscard(change); }
    };

    const Place& place_;
    const ChangeSubject& subject_;
    std::unique_ptr<JxIniChange, Discard> change_;
};

// Runs the edits, first on a copy of the file and, when they change something, once more while other writers wait; then
// writes. What is so already needs no right to write. The edits must do the same when they see the same, and call no
// setup routine. False with a record when they refuse or the file cannot be written. std::bad_alloc may be thrown.
bool changeFile(const Place& place, const ChangeSubject& subject, const std::function<bool(FileChange&)>& edit);

}  // namespace jx::api3
