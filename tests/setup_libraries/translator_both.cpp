// A translator's setup library that exports both entry names. It answers what JX_TRANSLATOR_ANSWER says, else 1.
#include "call_record.h"

namespace {

const jx::test::LoadRecord loaded;

BOOL configure(const char* routine, HWND hwnd, DWORD* option) {
    jx::test::recordTranslator(routine, hwnd, option);
    if (option != nullptr)
        *option = 4711;
    const char* answer = std::getenv("JX_TRANSLATOR_ANSWER");
    return answer == nullptr ? TRUE : std::atoi(answer);
}

}  // namespace

JX_ENTRY_POINT BOOL CONFIGTRANSLATOR(HWND hwnd, DWORD* option) {
    return configure("CONFIGTRANSLATOR", hwnd, option);
}

JX_ENTRY_POINT BOOL ConfigTranslator(HWND hwnd, DWORD* option) {
    return configure("ConfigTranslator", hwnd, option);
}
