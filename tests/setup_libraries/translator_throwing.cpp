// A translator's setup library that throws.
#include <stdexcept>

#include "call_record.h"

namespace {
const jx::test::LoadRecord loaded;
}

JX_ENTRY_POINT BOOL ConfigTranslator(HWND hwnd, DWORD* option) {
    const jx::test::FrameRecord frame;
    jx::test::recordTranslator("ConfigTranslator", hwnd, option);
    throw std::runtime_error("the translator's own words");
}
