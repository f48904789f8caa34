// What the model's tests share: a home with two files, and rows that say what a change makes of them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"
#include "sample_sources.h"
#include "test_home.h"

namespace jx::model::test {

using jx::test::kSources;

inline constexpr const char* kDrivers = R"([ODBC Drivers]
Plain=Installed

[Plain]
Driver=/opt/libplain.so
Setup=/opt/setup.so
FileUsage=0
)";

inline const char* kindWord(Reason::Kind kind) {
    using enum Reason::Kind;
    switch (kind) {
        case none:
            return "none";
        case refused:
            return "refused";
        case locked:
            return "locked";
        case fileTrouble:
            return "file trouble";
        case notFound:
            return "not found";
        case exists:
            return "exists";
        case incomplete:
            return "incomplete";
        case noRight:
            return "no right";
        case failed:
            break;
    }
    return "failed";
}

// The text with every occurrence of word replaced.
inline std::string replaced(std::string text, const std::string& word, const std::string& with) {
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + with.size()))
        text.replace(at, word.size(), with);
    return text;
}

// The text with one part replaced, which must be there.
inline std::string with(std::string text, const std::string& part, const std::string& replacement) {
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return at == std::string::npos ? text : text.replace(at, part.size(), replacement);
}

// ModelTest: the files above in a home of the test's own.
class ModelTest : public testing::Test {
protected:
    // What is done to the files.
    using Action = std::function<ChangeResult(const Configuration& configuration, const ChangeWay& way)>;

    // "refused: FACT | ADVICE", or nothing when nothing is wrong; the home is called "~".
    std::string told(const Reason& reason) const {
        if (!reason)
            return {};
        return replaced(std::string(kindWord(reason.kind)) + ": " + reason.fact + " | " + reason.advice, home_.path(),
                        "~");
    }

    // Carries it out on the two texts. What was not done must leave no trace, and a preview never does; what a preview
    // tells must be what is done.
    std::string change(const Action& action) {
        const std::string sources = home_.text(".odbc.ini");
        const std::string drivers = home_.text(".odbcinst.ini");
        ChangeWay never;
        never.writing = ChangeWay::Writing::never;
        const ChangeResult shown = action(Configuration::read(), never);
        EXPECT_EQ(home_.text(".odbc.ini"), sources);
        EXPECT_EQ(home_.text(".odbcinst.ini"), drivers);
        const ChangeResult done = action(Configuration::read(), ChangeWay());
        EXPECT_EQ(done.reason, shown.reason);
        EXPECT_EQ(pathsOf(done), pathsOf(shown));
        EXPECT_EQ(done.isDone() && done.files.empty(),
                  done.isDone() && home_.text(".odbc.ini") == sources && home_.text(".odbcinst.ini") == drivers);
        if (!done.isDone()) {
            EXPECT_EQ(home_.text(".odbc.ini"), sources);
            EXPECT_EQ(home_.text(".odbcinst.ini"), drivers);
        }
        EXPECT_EQ(home_.names(), (std::vector<std::string>{".odbc.ini", ".odbcinst.ini"}));
        return told(done.reason);
    }

    static std::vector<std::string> pathsOf(const ChangeResult& result) {
        std::vector<std::string> paths;
        for (const ChangedFile& file : result.files)
            paths.push_back(file.path);
        return paths;
    }

    std::string sources() const { return home_.text(".odbc.ini"); }
    std::string drivers() const { return home_.text(".odbcinst.ini"); }

    jx::test::TestHome home_{{".odbc.ini", kSources}, {".odbcinst.ini", kDrivers}};
};

}  // namespace jx::model::test
