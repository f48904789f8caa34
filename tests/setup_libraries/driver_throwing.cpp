// A driver's setup library that throws an exception of its own.
#include <stdexcept>

#include "call_record.h"

namespace {

const jx::test::LoadRecord loaded;

// What it says is made by code of this library.
class SetupFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    const char* what() const noexcept override { return "the driver's own words"; }
};

}  // namespace

JX_ENTRY_POINT BOOL ConfigDSN(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    const jx::test::FrameRecord frame;
    jx::test::recordConfig("ConfigDSN", hwnd, request, driver, attributes);
    throw SetupFailure("setup");
}
