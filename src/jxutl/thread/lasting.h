// An object that is never destroyed.
#pragma once

namespace jx {

// Lasting: process-wide state that other threads and exit handlers may still use while the program ends.
// Use      constinit jx::Lasting<T> name; then name.object. T is default-constructed.
// Memory   what T owns at the end is released by the end of the process only.
template <class T>
union Lasting {
    T object;

    constexpr Lasting() : object() {}
    ~Lasting() {}  // NOLINT(modernize-use-equals-default): a defaulted one would not exist
    Lasting(const Lasting&) = delete;
    Lasting& operator=(const Lasting&) = delete;
};

}  // namespace jx
