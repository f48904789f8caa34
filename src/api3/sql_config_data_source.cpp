// The exported call that configures a data source through its driver's setup library.
#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/arguments.h"
#include "api3/call.h"
#include "api3/data_source_configuration.h"

using namespace jx::api3;

namespace {

// prepare makes the texts while memory may run short; the routine runs outside of that.
template <class Prepare>
BOOL configure(Prepare prepare) {
    ThreadState* state = beginCall();
    if (state == nullptr)
        return FALSE;
    const ModeAfterwards whateverHappens(*state);
    ConfigurationRequest request{};
    return guarded([&] { return prepare(request); }) && configureDataSource(*state, request) ? TRUE : FALSE;
}

}  // namespace

BOOL SQLConfigDataSource(HWND hwndParent, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    return configure([&](ConfigurationRequest& request) {
        request = {hwndParent, fRequest, lpszDriver, lpszAttributes};
        return fRequest == ODBC_REMOVE_DEFAULT_DSN || (areUtf8({lpszDriver}) && isUtf8List(lpszAttributes));
    });
}

JX_ALSO_WITH_A(SQLConfigDataSource);

BOOL SQLConfigDataSourceW(HWND hwndParent, WORD fRequest, const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszAttributes) {
    std::optional<WideTexts> driver;
    std::optional<WideList> attributes;
    return configure([&](ConfigurationRequest& request) {
        const bool takesTexts = fRequest != ODBC_REMOVE_DEFAULT_DSN;
        driver.emplace(std::initializer_list<const SQLWCHAR*>{takesTexts ? lpszDriver : nullptr});
        attributes.emplace(takesTexts ? lpszAttributes : nullptr);
        request = {hwndParent, fRequest, (*driver)[0], attributes->list()};
        return driver->areWhole() && attributes->isWhole();
    });
}
