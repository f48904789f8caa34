// Calls that change the two files, each with both files before and after.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "../record_text.h"
#include "test_home.h"

namespace jx::test {

// InstallationCase: a home with the two files as they were, and a call on them.
class InstallationCase {
public:
    // What the call reported. A batch installation reports nothing but whether it has installed a file.
    enum class Report { success, failure };

    struct Files {
        std::string drivers;
        std::string sources;

        friend bool operator==(const Files&, const Files&) = default;
        friend std::ostream& operator<<(std::ostream& out, const Files& files) {
            return out << "--- .odbcinst.ini\n" << files.drivers << "--- .odbc.ini\n" << files.sources;
        }
    };

    InstallationCase(const char* name, Files after, std::function<bool()> call)
        : name_(name), after_(std::move(after)), call_(std::move(call)) {}

    const char* name() const { return name_; }
    static const Files& before();
    const Files& after() const { return after_; }

    // Writes the two files as they were before the call.
    static void putBack(const TestHome& home) {
        home.put(".odbcinst.ini", before().drivers);
        home.put(".odbc.ini", before().sources);
    }
    static Files filesOf(const TestHome& home) { return {home.text(".odbcinst.ini"), home.text(".odbc.ini")}; }

    Report call() const { return call_() ? Report::success : Report::failure; }

private:
    const char* name_;
    Files after_;
    std::function<bool()> call_;
};

// The cases; those of a script find it under this path.
std::vector<InstallationCase> installationCases(const std::string& script);

// The script, to be put there.
std::string installationScript();

}  // namespace jx::test
