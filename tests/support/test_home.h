// A home directory of a test's own: its files are set, read back whole and gone afterwards.
#pragma once

#include <sys/types.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jx::test {

// TestHome: makes two empty directories, points HOME at the one and ODBCSYSINI at the other, so that no file of this
// machine counts, and unsets ODBCINI and ODBCINSTINI; leaving scope removes both and restores the four variables.
// Meanwhile new files may be read by all, whatever the mask of the shell was. One at a time in a process. A failure to
// set it up fails the test.
class TestHome {
public:
    TestHome();
    explicit TestHome(std::initializer_list<std::pair<std::string_view, std::string_view>> files);
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    const std::string& path() const { return path_; }
    std::string file(std::string_view name) const { return path_ + "/" + std::string(name); }

    // The directory of the system's files: that of the home, with ".etc" behind it.
    std::string systemPath() const { return path_ + ".etc"; }
    std::string systemFile(std::string_view name) const { return systemPath() + "/" + std::string(name); }
    void putSystem(std::string_view name, std::string_view text) const;
    std::string systemText(std::string_view name) const;

    // Writes a file whole, with mode 0600.
    void put(std::string_view name, std::string_view text) const;

    // The whole text of a file; "(absent)" when there is none.
    std::string text(std::string_view name) const;

    // The names in the directory, sorted.
    std::vector<std::string> names() const;

private:
    mode_t oldMask_;
    std::string path_;
    std::vector<std::pair<std::string, std::string>> oldVariables_;
    std::vector<std::string> unsetVariables_;
};

}  // namespace jx::test
