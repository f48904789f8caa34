// An object that is never destroyed.
#pragma once

namespace jx {

// Lasting: process-wide state that other threads, and clean-up that runs at exit, may still use while the program ends.
// Use      constinit jx::Lasting<T> name; then name.object. T starts as its default constructor leaves it.
// Promise  what T owns at the end is given back by the end of the process alone.
template <class T>
union Lasting {
    T object;

    constexpr Lasting() : object() {}
    ~Lasting() {}  // NOLINT(modernize-use-equals-default): a defaulted one would not exist
    Lasting(const Lasting&) = delete;
    Lasting& operator=(const Lasting&) = delete;
};

}  // namespace jx
