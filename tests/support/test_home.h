// A home directory of a test's own: its files are set, read back whole and gone afterwards.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jx::test {

// TestHome: makes an empty directory, points HOME at it and unsets ODBCINI and ODBCINSTINI; leaving scope removes the
// directory and restores the three variables. One at a time in a process. A failure to set it up fails the test.
class TestHome {
public:
    TestHome();
    explicit TestHome(std::initializer_list<std::pair<std::string_view, std::string_view>> files);
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    const std::string& path() const { return path_; }
    std::string file(std::string_view name) const { return path_ + "/" + std::string(name); }

    // Writes a file whole, with mode 0600.
    void put(std::string_view name, std::string_view text) const;

    // The whole text of a file; "(absent)" when there is none.
    std::string text(std::string_view name) const;

    // The names in the directory, sorted.
    std::vector<std::string> names() const;

private:
    std::string path_;
    std::vector<std::pair<std::string, std::string>> oldVariables_;
    std::vector<std::string> unsetVariables_;
};

}  // namespace jx::test
