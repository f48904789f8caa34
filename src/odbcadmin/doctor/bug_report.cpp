// Writing the block.
#include "odbcadmin/doctor/bug_report.h"

#include <gnu/libc-version.h>
#include <jxini.h>
#include <sys/utsname.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/doctor/library_file.h"
#include "odbcadmin/model/text.h"
#include "rules/secrets.h"

namespace jx::doctor {

namespace {

constexpr std::size_t kMostLines = 200;

std::string systemLines(const std::string& version) {
    utsname system{};
    ::uname(&system);
    return "odbcadmin " + version + ", " + systemText(thisSystem()) + "\n" + system.sysname + " " + system.release +
           " " + system.machine + ", C library " + gnu_get_libc_version() + "\n" + thisUserText() + "\n";
}

std::string variableLines() {
    std::string text;
    for (const char* name : {"HOME", "ODBCINI", "ODBCINSTINI", "ODBCSYSINI", "LD_LIBRARY_PATH", "LD_PRELOAD"}) {
        const char* value = std::getenv(name);
        text.append(name).append(value == nullptr ? " is not set" : "=" + model::printable(value)).append("\n");
    }
    return text;
}

std::string withoutLineEnd(std::string_view line) {
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    return std::string(line);
}

std::string fileLines(const std::string& path) {
    const std::unique_ptr<JxIniText, void (*)(JxIniText*)> text(jxIniRead(path.c_str()), jxIniRelease);
    if (text == nullptr)
        return "(not read)\n";
    std::size_t length = 0;
    const char* bytes = jxIniBytes(text.get(), &length);
    const std::size_t count = jxIniPieceCount(text.get());
    std::string lines;
    JxIniPiece piece;
    for (std::size_t i = 0; i < count && i < kMostLines && jxIniPieceAt(text.get(), i, &piece) != 0; ++i)
        lines
            .append(model::printable(rules::maskedLine(withoutLineEnd({bytes + piece.begin, piece.end - piece.begin}))))
            .append("\n");
    if (count > kMostLines)
        lines.append("(and " + std::to_string(count - kMostLines) + " more)\n");
    return lines;
}

std::string placeLines(const model::ConfigPlace& place) {
    std::string text;
    for (const model::Candidate& each : place.candidates)
        text.append((each.wins ? "* " : "  ") + model::printable(each.path) + "  " +
                    (each.exists ? rightsText(each.path) : "not there") + "  " + each.why + "\n");
    return text;
}

}  // namespace

std::string bugReport(const std::string& version, const std::vector<model::ConfigPlace>& places,
                      const Findings& findings) {
    std::string text = "---- odbcadmin doctor --report ----\n" + systemLines(version) + variableLines();
    for (const model::ConfigPlace& place : places)
        text.append("\n" + place.file + "\n" + placeLines(place) + "---- text\n" + fileLines(place.path) + "----\n");
    text.append("\nfindings: " + std::to_string(findings.size()) + "\n");
    for (const Finding& each : findings)
        text.append(std::string(severityWord(each.severity)) + " " + each.id + " " + model::printable(each.subject) +
                    "\n  " + model::printable(each.fact) + "\n");
    return text + "---- end ----\n";
}

}  // namespace jx::doctor
