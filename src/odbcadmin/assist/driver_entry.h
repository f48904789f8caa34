// Checking what a user wants to enter as a driver, and entering it.
#pragma once

#include <string>

namespace jx::assist {

struct DriverEntry {
    std::string name;
    std::string library;
    std::string setup;  // empty: none
};

// Why this cannot be entered at all, as a sentence; empty when it can.
std::string whyNot(const DriverEntry& entry);

// Loads both libraries in a child process. What speaks against them, as sentences; empty when nothing does.
std::string tryLibraries(const DriverEntry& entry);

// Whether a driver of that name is registered.
bool isRegistered(const std::string& name);

// Enters it in one change of .odbcinst.ini; "" or a sentence about what went wrong, when nothing is changed.
std::string enter(const DriverEntry& entry);

}  // namespace jx::assist
