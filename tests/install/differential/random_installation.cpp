// Makes up installations, and makes them.
#include "random_installation.h"

#include <odbcinst.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "message_box_script.h"
#include "test_home.h"

namespace jx::test {

namespace {

using namespace std::string_literals;

constexpr unsigned kWindow = 77;

void appendEntry(std::string& text, const std::string& key, const std::string& value) {
    text.append(key).append("=").append(value).append("\n");
}

std::string withLineEnds(const std::string& text, std::string_view end) {
    std::string changed;
    for (const char character : text)
        if (character == '\n')
            changed += end;
        else
            changed += character;
    return changed;
}

std::string replaced(std::string text, std::string_view part, std::string_view by) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + by.size()))
        text.replace(at, part.size(), by);
    return text;
}

std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

}  // namespace

// ---- names and values ----

std::string RandomInstallation::name() {
    if (!names_.empty() && !oneIn(3))
        return oneOf(names_);
    if (!oneIn(3)) {
        names_.push_back(oneOf({"D", "Driver One", "Driver Two", "Sales", "Accounts", "T"}));
        return names_.back();
    }
    const std::string made = oneIn(12) ? std::string(oneIn(2) ? 60 : 900 + below(300), 'n')
                                       : oneOf({"D",
                                                "d",
                                                "Driver One",
                                                "Driver Two",
                                                "My=Driver",
                                                "ODBC Drivers",
                                                "odbc translators",
                                                "ODBC",
                                                "ODBC Data Sources",
                                                "Default",
                                                "default",
                                                "T",
                                                "a ;b",
                                                ";x",
                                                "[x",
                                                "x]",
                                                "a\rb",
                                                "\xc3\xa9",
                                                "NOT AVAILABLE",
                                                " D ",
                                                "CreateDSN",
                                                "CreateDSN=Sales ;x",
                                                "Setup",
                                                "D-Keys",
                                                "Sales",
                                                "Accounts",
                                                "#",
                                                "x\ty"});
    names_.push_back(made);
    return made;
}

std::string RandomInstallation::fileName() {
    if (oneIn(20))
        return std::string(100 + below(1000), 'f') + ".so";
    return oneOf({"d.so", "s.so", "shared.so", "t.so", "noext", "", "sub/dir.so", "l.so.1", "x.long", " blank.so",
                  "two  .so", "end.so  ", "a=b.so"});
}

std::string RandomInstallation::dataSources() {
    std::string list = name();
    while (oneIn(2))
        list.append(oneOf({",", ", ", " ,", ",,"})).append(oneIn(6) ? "" : name());
    return list;
}

// ---- scripts ----

std::string RandomInstallation::scriptLine() {
    std::string line = oneOf({"1", " 2", ""}) + "," + oneOf({"", " ", "  "}) + fileName();
    const unsigned commas = oneIn(5) ? below(20) : 19;
    for (unsigned comma = 0; comma < commas; ++comma)
        line.append(comma == 3 ? ",2024-03-15" : ",");
    return line;
}

std::string RandomInstallation::capabilities() {
    std::string text;
    for (const char* key : {"APILevel", "CreateDSN", "ConnectFunctions", "DriverODBCVer", "FileUsage", "FileExtns",
                            "SQLLevel", "Other"}) {
        if (!oneIn(2))
            continue;
        const bool isList = key == "CreateDSN"s;
        appendEntry(text, key,
                    isList ? dataSources() : oneOf({"1", "", "*.a,*.b", "CreateDSN", "NOT AVAILABLE", "x ; y"}));
    }
    return text;
}

std::string RandomInstallation::scriptSection(const std::string& of) {
    std::string text = "[" + of + "]\n";
    if (!oneIn(4))
        appendEntry(text, quoted("Driver"), scriptLine());
    const unsigned count = below(4);
    for (unsigned line = 0; line < count; ++line)
        appendEntry(text, quoted(oneOf({"Driver", "Driver", "Setup", "Setup", "Translator", "Help", "CPanel"})),
                    scriptLine());
    if (oneIn(2))
        text.append("[").append(of).append("-Keys]\n").append(capabilities());
    return text;
}

std::string RandomInstallation::script() {
    std::string text = oneIn(3) ? "; a package\n[ODBC Drivers]\n\"D\"=\n" : "";
    const unsigned sections = 1 + below(5);
    for (unsigned section = 0; section < sections; ++section)
        text += scriptSection(name());
    if (oneIn(2)) {
        text += "[ODBC Translators]\n";
        const unsigned count = below(3);
        for (unsigned translator = 0; translator < count; ++translator)
            appendEntry(text, quoted(name()), "");
    }
    if (oneIn(3))
        text += scriptSection(oneOf({"ODBC", "ODBC Administrator", "ODBC Driver Manager"}));
    return withLineEnds(text, oneIn(5) ? "\r\n" : "\n");
}

// ---- lists ----

std::string RandomInstallation::driverList() {
    std::string list;
    const unsigned count = oneIn(8) ? 0 : 1 + below(3);
    for (unsigned driver = 0; driver < count; ++driver)
        list.append(oneIn(8) ? "\"" : "").append(name()).append(oneIn(6) ? "=chosen" : "").append(1, '\0');
    return list;
}

std::string RandomInstallation::keywordList() {
    std::string list = name() + '\0';
    if (!oneIn(12))
        list.append(oneIn(12) ? "Driver2=" : "Driver=").append("/l/").append(fileName()).append(1, '\0');
    if (!oneIn(3))
        list.append("Setup=/l/").append(fileName()).append(1, '\0');
    while (!oneIn(3))
        list.append(oneOf({"CreateDSN", "APILevel", "SQLLevel", "DRIVER", "Any Key", "[bad", ""}))
            .append(oneIn(8) ? "" : "=")
            .append(oneIn(2) ? dataSources() : oneOf({"1", "", "two\nlines", "a=b"}))
            .append(1, '\0');
    return list;
}

// ---- the files before ----

std::string RandomInstallation::configurationFile(std::string_view listName) {
    std::string text = oneIn(10) ? "\xef\xbb\xbf" : "";
    const unsigned sections = below(5);
    for (unsigned section = 0; section < sections; ++section) {
        const bool isList = oneIn(2);
        text.append(oneIn(4) ? "; about it\n" : "").append("[");
        text.append(isList ? std::string(listName) : oneIn(5) ? "Default" : name()).append("]\n");
        const unsigned keys = below(4);
        for (unsigned key = 0; key < keys; ++key)
            appendEntry(text, isList ? name() : oneOf({"Driver", "Setup", "driver", "APILevel", "Translator", "; no"}),
                        isList ? "Installed" : oneOf({"/old/d.so", "/old/dir/d", "/old/d.soname", "", "D", "d.so"}));
        text.append(oneIn(2) ? "\n" : "").append(oneIn(8) ? "loose line\n" : "");
    }
    if (oneIn(6) && !text.empty())
        text.pop_back();
    return withLineEnds(text, oneIn(5) ? "\r\n" : "\n");
}

RandomInstallation::RandomInstallation(unsigned number) : random_(number) {
    if (!oneIn(5))
        files_.emplace_back(".odbcinst.ini", configurationFile("ODBC Drivers"));
    isOneFile_ = oneIn(20);
    if (!isOneFile_ && !oneIn(4))
        files_.emplace_back(".odbc.ini", configurationFile("ODBC Data Sources"));
    files_.emplace_back("odbc.inf", script());
    chooseCall();
}

void RandomInstallation::chooseCall() {
    constexpr std::array kKinds = {Kind::batch,           Kind::batch,           Kind::batch,
                                   Kind::driverOfScript,  Kind::driverOfList,    Kind::driverOfList,
                                   Kind::writeDataSource, Kind::removeDataSource};
    kind_ = kKinds.at(below(kKinds.size()));
    scriptName_ = oneIn(15) ? ".odbcinst.ini" : "odbc.inf";
    source_ = oneOf({"", "/l", "/l/", "/cdrom/disk 1"});
    window_ = oneIn(2) ? kWindow : 0;
    size_ = std::array<unsigned short, 5>{1, 5, 64, 1024, 1024}.at(below(5));
    list_ = kind_ == Kind::batch ? driverList() : kind_ == Kind::driverOfList ? keywordList() : name();
    second_ = name();
}

// ---- the call ----

std::string RandomInstallation::installBatch(const std::string& script) const {
    std::string list = list_ + '\0';
    const BOOL result =
        SQLInstallODBC(window_, script.c_str(), source_.empty() ? nullptr : source_.c_str(), list.data());
    return std::to_string(result) + " " + list;
}

std::string RandomInstallation::installDriver(const std::string& script) const {
    std::array<char, 1024> path;
    path.fill('?');
    WORD length = 999;
    const bool isList = kind_ == Kind::driverOfList;
    const std::string list = list_ + '\0';
    const BOOL result = SQLInstallDriver(isList ? nullptr : script.c_str(), isList ? list.data() : list_.c_str(),
                                         path.data(), size_, &length);
    return std::to_string(result) + " " + std::to_string(length) + " " + std::string(path.data(), path.size());
}

std::string RandomInstallation::call(const std::string& script) const {
    switch (kind_) {
        case Kind::batch:
            return installBatch(script);
        case Kind::driverOfScript:
        case Kind::driverOfList:
            return installDriver(script);
        case Kind::writeDataSource:
            return std::to_string(SQLWriteDSNToIni(list_.c_str(), second_.c_str()));
        case Kind::removeDataSource:
            return std::to_string(SQLRemoveDSNFromIni(list_.c_str()));
    }
    return {};
}

std::string RandomInstallation::outcome() const {
    const TestHome home;
    for (const auto& [name, text] : files_)
        home.put(name, text);
    if (isOneFile_ && ::symlink(".odbcinst.ini", home.file(".odbc.ini").c_str()) != 0)
        return "no link";
    const MessageBoxScript boxes;
    std::string text = call(scriptName_ == "odbc.inf" ? home.file(scriptName_) : scriptName_);
    for (const ShownBox& box : boxes.boxes())
        text.append("\nbox: ").append(box.text);
    for (const char* name : {".odbcinst.ini", ".odbc.ini"})
        text.append("\n--- ").append(name).append("\n").append(home.text(name));
    for (const std::string& name : home.names())
        text.append("\n--- ").append(name);
    return replaced(std::move(text), home.path(), "@HOME@");
}

bool RandomInstallation::isUnchangedIn(const std::string& outcome) const {
    return std::all_of(files_.begin(), files_.end(), [&outcome](const auto& file) {
        return file.first == "odbc.inf" ||
               outcome.find("\n--- " + file.first + "\n" + file.second + "\n---") != std::string::npos;
    });
}

std::string RandomInstallation::text() const {
    constexpr std::array kNames = {"batch", "driver of a script", "driver of a list", "write", "remove"};
    std::string text = kNames.at(static_cast<std::size_t>(kind_));
    text.append(" script ").append(scriptName_).append(" source ").append(source_);
    text.append(" size ").append(std::to_string(size_)).append("\nlist ").append(replaced(list_, "\0"s, "|"));
    text.append("\nsecond ").append(second_).append(isOneFile_ ? "\none file" : "");
    for (const auto& [name, bytes] : files_)
        text.append("\n--- ").append(name).append("\n").append(bytes);
    return text;
}

}  // namespace jx::test
