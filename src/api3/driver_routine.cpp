// Calls ConfigDriver.
#include "api3/driver_routine.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "api3/call.h"
#include "api3/quoted.h"
#include "api3/setup_routines.h"
#include "api3/text_conversion.h"

namespace jx::api3 {

namespace {

constexpr std::size_t kBytesOfCharacter = 3;  // a unit of UTF-16 takes at most so many in UTF-8

// Call: what the routine is given, in the form that it takes, and what it gives back.
struct Call {
    ConfigDriverW* wide = nullptr;
    ConfigDriver* narrow = nullptr;
    std::vector<SQLWCHAR> wideDriver;
    std::optional<std::vector<SQLWCHAR>> wideText;
    std::vector<SQLWCHAR> wideMessage;
    std::string message;
    WORD room = 0;
    WORD length = 0;

    bool isThere() const { return wide != nullptr || narrow != nullptr; }
};

// As much as the caller's buffer holds, counted as the routine counts; where they count differently, as much as can be
// needed.
std::size_t roomFor(const Call& call, const TextOutput& output) {
    if (output.countsUnits() == (call.wide != nullptr))
        return output.size();
    return std::min<std::size_t>(output.size() * kBytesOfCharacter, UINT16_MAX);
}

Call prepare(const SetupRoutines& routines, const RegisteredDriver& driver, const DriverRequest& request,
             const DriverMessage& message) {
    Call call;
    call.wide = routines.find<ConfigDriverW>("ConfigDriverW");
    call.narrow = routines.find<ConfigDriver>("ConfigDriver");
    call.room = static_cast<WORD>(roomFor(call, message.output));
    if (call.wide != nullptr) {
        call.wideDriver = toUtf16(driver.name);
        if (request.text != nullptr)
            call.wideText = toUtf16(request.text);
        call.wideMessage.assign(std::size_t{call.room} + 1, 0);
    } else {
        call.message.assign(std::size_t{call.room} + 1, '\0');
    }
    return call;
}

bool run(Call& call, const RegisteredDriver& driver, const DriverRequest& request) {
    if (call.wide != nullptr)
        return call.wide(request.window, request.request, call.wideDriver.data(),
                         call.wideText ? call.wideText->data() : nullptr,
                         call.room > 0 ? call.wideMessage.data() : nullptr, call.room, &call.length) != FALSE;
    return call.narrow(request.window, request.request, driver.name.c_str(), request.text,
                       call.room > 0 ? call.message.data() : nullptr, call.room, &call.length) != FALSE;
}

// Hands on what the routine wrote. When it says that there is more, that is the length; else what is handed on has one.
void giveMessage(const Call& call, const DriverMessage& message) {
    const std::string text = call.wide != nullptr ? toUtf8WithMarks(unitsOf(call.wideMessage.data()))
                                                  : call.message.substr(0, call.message.find('\0'));
    const Placed placed = message.output.place(text);
    const bool isMore = call.length >= call.room;
    const std::size_t length = isMore ? std::max<std::size_t>(placed.length, call.length) : placed.length;
    if (message.length != nullptr)
        *message.length = static_cast<WORD>(std::min<std::size_t>(length, UINT16_MAX));
}

bool load(ThreadState& state, const RegisteredDriver& driver, std::optional<SetupRoutines>& routines) {
    return guarded([&] {
        routines.emplace(state, driver.setup);
        return routines->whyNot().empty() || refuse(ODBC_ERROR_LOAD_LIB_FAILED, routines->whyNot());
    });
}

bool refuseForRoutine(const RegisteredDriver& driver) {
    return guarded([&] {
        return refuse(ODBC_ERROR_REQUEST_FAILED,
                      "ConfigDriver of driver " + quoted(driver.name) + " failed and gave no reason.");
    });
}

// Prepares, runs and hands on; the middle is the routine's own.
DriverOutcome callRoutine(const SetupRoutines& routines, const RegisteredDriver& driver, const DriverRequest& request,
                          const DriverMessage& message) {
    Call call;
    if (!guarded([&] {
            call = prepare(routines, driver, request, message);
            return true;
        }))
        return DriverOutcome::failed;
    if (!call.isThere())
        return DriverOutcome::none;
    const bool done = run(call, driver, request);
    guarded([&] {
        giveMessage(call, message);
        return true;
    });
    return done ? DriverOutcome::done : DriverOutcome::failed;
}

}  // namespace

DriverOutcome callDriverRoutine(ThreadState& state, const RegisteredDriver& driver, const DriverRequest& request,
                                const DriverMessage& message) {
    const std::size_t recordsBefore = state.errors.count();
    DriverOutcome outcome = DriverOutcome::none;
    {
        const RoutineScope nestedCallsBelongHere(state);
        std::optional<SetupRoutines> routines;
        if (!load(state, driver, routines))
            return routines ? DriverOutcome::notLoaded : DriverOutcome::failed;
        outcome = callRoutine(*routines, driver, request, message);
    }
    if (outcome != DriverOutcome::failed)
        state.errors.keep(recordsBefore);
    else if (state.errors.count() == recordsBefore)
        refuseForRoutine(driver);
    return outcome;
}

}  // namespace jx::api3
