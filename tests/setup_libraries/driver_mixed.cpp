// A driver's setup library with the mixed-case entry name only; it accepts with a number other than TRUE.
#include "call_record.h"

namespace {
const jx::test::LoadRecord loaded;
}

JX_ENTRY_POINT BOOL ConfigDSN(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    jx::test::recordConfig("ConfigDSN", hwnd, request, driver, attributes);
    return 7;
}
