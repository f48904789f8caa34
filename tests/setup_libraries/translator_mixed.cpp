// A translator's setup library with the mixed-case entry name only.
#include "call_record.h"

namespace {
const jx::test::LoadRecord loaded;
}

JX_ENTRY_POINT BOOL ConfigTranslator(HWND hwnd, DWORD* option) {
    jx::test::recordTranslator("ConfigTranslator", hwnd, option);
    return TRUE;
}
