// Writes down what happens to a setup library of the tests, in the file that JX_SETUP_CALLS names.
#pragma once

#include <jxtypes.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace jx::test {

inline void recordLine(const std::string& line) {
    if (const char* path = std::getenv("JX_SETUP_CALLS"); path != nullptr)
        std::ofstream(path, std::ios::app) << line << '\n';
}

// A list with "|" in place of its NULs, the final one included.
inline std::string listText(LPCSTR list) {
    if (list == nullptr)
        return "(null)";
    std::string text;
    for (; *list != '\0'; list += std::strlen(list) + 1)
        text += std::string(list) + "|";
    return text + "|";
}

inline void recordConfig(const char* routine, HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    recordLine(std::string(routine) + " hwnd=" + std::to_string(hwnd) + " request=" + std::to_string(request) +
               " driver=" + driver + " attributes=" + listText(attributes));
}

inline void recordTranslator(const char* routine, HWND hwnd, const DWORD* option) {
    recordLine(std::string(routine) + " hwnd=" + std::to_string(hwnd) +
               " option=" + (option == nullptr ? std::string("(null)") : std::to_string(*option)));
}

// LoadRecord: one object a library tells when it comes and goes.
struct LoadRecord {
    LoadRecord() { recordLine("loaded"); }
    ~LoadRecord() { recordLine("unloaded"); }
    LoadRecord(const LoadRecord&) = delete;
    LoadRecord& operator=(const LoadRecord&) = delete;
};

// FrameRecord: an object on the stack of a routine that throws.
struct FrameRecord {
    FrameRecord() = default;
    ~FrameRecord() { recordLine("frame destroyed"); }
    FrameRecord(const FrameRecord&) = delete;
    FrameRecord& operator=(const FrameRecord&) = delete;
};

}  // namespace jx::test

#define JX_ENTRY_POINT extern "C" __attribute__((visibility("default")))
