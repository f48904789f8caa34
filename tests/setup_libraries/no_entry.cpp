// A setup library without any entry point.
#include "call_record.h"

namespace {
const jx::test::LoadRecord loaded;
}
