// Which scope of data sources a call reads and writes.
//
//     const Mode mode = modeOf(state);
//     const OwnMode during(state, Mode::system);   // for this thread, until the scope is left
#pragma once

#include <cstdint>
#include <optional>

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

struct ThreadState;

enum class Mode : std::uint8_t { both = ODBC_BOTH_DSN, user = ODBC_USER_DSN, system = ODBC_SYSTEM_DSN };

// The thread's own mode while a setup routine runs on it, else the process's.
Mode modeOf(const ThreadState& state);

// Sets the thread's own mode when it has one, else the process's.
void setMode(ThreadState& state, Mode mode);

// OwnMode: gives the thread a mode of its own for as long as it lives; then the thread has again what it had before.
// A mode that is set meanwhile goes with it.
class OwnMode {
public:
    OwnMode(ThreadState& state, Mode mode);
    ~OwnMode();
    OwnMode(const OwnMode&) = delete;
    OwnMode& operator=(const OwnMode&) = delete;

private:
    ThreadState& state_;
    std::optional<Mode> before_;
};

// ModeAfterwards: puts the mode back to both when its scope is left, as every SQLConfigDataSource leaves it; inside a
// setup routine it puts back the mode that the routine had.
class ModeAfterwards {
public:
    explicit ModeAfterwards(ThreadState& state);
    ~ModeAfterwards();
    ModeAfterwards(const ModeAfterwards&) = delete;
    ModeAfterwards& operator=(const ModeAfterwards&) = delete;

private:
    ThreadState& state_;
    Mode afterwards_;
};

}  // namespace jx::api3
