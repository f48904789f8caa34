// Keeps the process's mode.
#include "api3/config_mode.h"

#include <atomic>

#include "api3/thread_state.h"

namespace jx::api3 {

namespace {

std::atomic<Mode> processMode = Mode::both;

}  // namespace

Mode modeOf(const ThreadState& state) {
    return state.ownMode ? *state.ownMode : processMode.load(std::memory_order_relaxed);
}

void setMode(ThreadState& state, Mode mode) {
    if (state.ownMode)
        state.ownMode = mode;
    else
        processMode.store(mode, std::memory_order_relaxed);
}

OwnMode::OwnMode(ThreadState& state, Mode mode) : state_(state), before_(state.ownMode) {
    state_.ownMode = mode;
}

OwnMode::~OwnMode() {
    state_.ownMode = before_;
}

// "When the routine's own call ends": what a routine set for itself before is what it had.
ModeAfterwards::ModeAfterwards(ThreadState& state) : state_(state), afterwards_(state.ownMode.value_or(Mode::both)) {}

ModeAfterwards::~ModeAfterwards() {
    setMode(state_, afterwards_);
}

}  // namespace jx::api3
