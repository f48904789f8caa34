// Records of an installation for tests: made from texts, and written out as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "install/install_record.h"
#include "test_home.h"

namespace jx::test {

// TestRecord: a record of an installation, released at the end of its scope.
class TestRecord {
public:
    // infFile may be null.
    explicit TestRecord(const char* infFile = nullptr);
    ~TestRecord();
    TestRecord(const TestRecord&) = delete;
    TestRecord& operator=(const TestRecord&) = delete;

    install::_Install* get() { return install_; }
    install::_Install* operator->() { return install_; }

    // Adds a selected component, or a file to the last one; a null file name means none.
    TestRecord& item(install::ItemKind kind, std::string_view name);
    TestRecord& file(const char* role, const char* fileName);

    // Sets a capability of the last component.
    TestRecord& capability(std::string_view key, const char* value);

    // Sets both directories.
    TestRecord& directories(const char* sourceDir, const char* targetDir);

private:
    install::_Install* install_ = nullptr;
};

// ScriptRecord: a script in a home of its own, and a record that names it.
struct ScriptRecord {
    explicit ScriptRecord(const std::string& text);
    TestHome home;
    TestRecord record;
};

// The names of scripts that cannot be read, made in home: a directory, a FIFO, an absent file, the empty name.
std::vector<std::string> unusableScripts(const TestHome& home);

// A heap copy as records own them.
unsigned char* ownedText(const char* text);

// A writable copy of a text, for calls that write into their arguments.
class WritableText {
public:
    explicit WritableText(std::string_view text) : bytes_(text.begin(), text.end()) { bytes_.push_back('\0'); }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(bytes_.data()); }
    std::string all() const { return {bytes_.data(), bytes_.size() - 1}; }

private:
    std::vector<char> bytes_;
};

// A text in "", or - for null.
std::string quoted(const unsigned char* text);

// One line a component, a capability, a file.
std::string dump(const install::_Install& install);

// The components' kinds and names only.
std::string dumpNames(const install::_Install& install);

// The names of the processed files, each in "".
std::string dumpProcessed(const install::_Install& install);

// A line of a script for a file, with every field that is read and 20 commas.
std::string scriptLine(std::string_view fileName);

}  // namespace jx::test
