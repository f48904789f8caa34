// What the doctor's tests share: built faults copied into a home directory, findings as text.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/library_checks.h"
#include "test_home.h"

// The build says where the built faults lie.
#ifndef JX_DOCTOR_FIXTURES
#define JX_DOCTOR_FIXTURES "fixtures"
#endif

namespace jx::doctor::test {

// The text with every occurrence of word replaced.
inline std::string replaced(std::string text, const std::string& word, const std::string& with) {
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + with.size()))
        text.replace(at, word.size(), with);
    return text;
}

// DoctorHome: a home directory for libraries and files.
class DoctorHome : public jx::test::TestHome {
public:
    using TestHome::TestHome;

    // Copies a built library into the home, under the name given; gives its path.
    std::string take(const std::string& fixture, const std::string& as) const {
        const std::string path = file(as);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::filesystem::copy_file(std::string(JX_DOCTOR_FIXTURES) + "/" + fixture, path,
                                   std::filesystem::copy_options::overwrite_existing);
        return path;
    }
    std::string take(const std::string& fixture) const { return take(fixture, fixture.substr(fixture.rfind('/') + 1)); }

    // One finding a paragraph: severity, identifier and subject, the fact, the advice; the home is called "~".
    std::string dump(const Findings& findings) const {
        std::string text;
        for (const Finding& each : findings)
            text.append(severityWord(each.severity))
                .append(" " + each.id + " " + each.subject + "\n  " + each.fact + "\n  " + each.advice + "\n");
        return replaced(text, path(), "~");
    }

    // The rights of the home itself, so that other users can enter it.
    void openToAll() const { ::chmod(path().c_str(), 0755); }

    // The loader's rules with this system's cache and with one default directory.
    LibraryOptions options() const {
        LibraryOptions made;
        made.places = loaderPlaces();
        made.places.environment.clear();
        made.places.defaults = {file("default")};
        return made;
    }

    std::string check(const std::string& library, LibraryRole role = LibraryRole::setup) const {
        return dump(checkLibrary("X", library, role, options()));
    }
};

}  // namespace jx::doctor::test
