// A driver's setup library that accepts nothing.
#include "call_record.h"

namespace {
const jx::test::LoadRecord loaded;
}

JX_ENTRY_POINT BOOL ConfigDSN(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    jx::test::recordConfig("ConfigDSN", hwnd, request, driver, attributes);
    return FALSE;
}
