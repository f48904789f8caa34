// What a child process tells its parent: a row of short texts, each with a letter that says what it is.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace jx::doctor {

// Writes one; for the body of a child. A NUL inside text would end it.
void report(int descriptor, char kind, const std::string& text = {});

// Calls take for each, in order; one that was cut off at the end is left out.
void eachReport(std::string_view result, const std::function<void(char kind, const std::string& text)>& take);

}  // namespace jx::doctor
