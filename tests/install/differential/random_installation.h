// Installations and data source entries made up from a number: the files before, the call and what it leaves.
#pragma once

#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jx::test {

// RandomInstallation: one call on two files, with names, scripts and lists that are in order or nearly so.
// Use      RandomInstallation(number).outcome() in any two states of the library: the same number is the same call on
// the
//          same files.
class RandomInstallation {
public:
    explicit RandomInstallation(unsigned number);

    // Makes the call in a home directory of its own. Result, output, message boxes and both files as one text, with
    // "@HOME@" in place of the directory.
    std::string outcome() const;

    // Whether an outcome shows the files as they were.
    bool isUnchangedIn(const std::string& outcome) const;

    // The files before and the call, to be read by a person.
    std::string text() const;

private:
    enum class Kind { batch, driverOfScript, driverOfList, writeDataSource, removeDataSource };

    unsigned below(unsigned most) { return static_cast<unsigned>(random_() % most); }
    bool oneIn(unsigned count) { return below(count) == 0; }
    std::string oneOf(const std::vector<std::string>& texts) {
        return texts[below(static_cast<unsigned>(texts.size()))];
    }

    std::string name();
    std::string fileName();
    std::string dataSources();
    std::string scriptLine();
    std::string capabilities();
    std::string scriptSection(const std::string& of);
    std::string script();
    std::string driverList();
    std::string keywordList();
    std::string configurationFile(std::string_view listName);
    void chooseCall();

    std::string call(const std::string& script) const;
    std::string installBatch(const std::string& script) const;
    std::string installDriver(const std::string& script) const;

    std::mt19937 random_;
    std::vector<std::string> names_;  // used so far, so that sections, lists and calls meet
    std::vector<std::pair<std::string, std::string>> files_;
    bool isOneFile_ = false;
    Kind kind_ = Kind::batch;
    std::string scriptName_;
    std::string source_;
    std::string list_;
    std::string second_;
    unsigned window_ = 0;
    unsigned short size_ = 0;
};

}  // namespace jx::test
