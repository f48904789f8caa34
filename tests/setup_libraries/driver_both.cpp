// A driver's setup library that exports both entry names.
#include "call_record.h"

namespace {
const jx::test::LoadRecord loaded;
}

JX_ENTRY_POINT BOOL CONFIGDSN(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    jx::test::recordConfig("CONFIGDSN", hwnd, request, driver, attributes);
    return TRUE;
}

JX_ENTRY_POINT BOOL ConfigDSN(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    jx::test::recordConfig("ConfigDSN", hwnd, request, driver, attributes);
    return TRUE;
}
