// Test programs find the helper program of their build; they do not lie where an installed command does.
#include "odbcadmin/trial/helper_run.h"

namespace {

[[maybe_unused]] const bool kIsChosen = [] {
    jx::trial::useHelper(JX_HELPER);
    return true;
}();

}  // namespace
