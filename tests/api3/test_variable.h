// An environment variable that a test sets.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace jx::test {

// TestVariable: gives the variable a value, or removes it with null, and puts back what it was when leaving scope.
class TestVariable {
public:
    TestVariable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name); before != nullptr)
            before_ = before;
        set(value);
    }
    TestVariable(const char* name, const std::string& value) : TestVariable(name, value.c_str()) {}
    ~TestVariable() { set(before_ ? before_->c_str() : nullptr); }
    TestVariable(const TestVariable&) = delete;
    TestVariable& operator=(const TestVariable&) = delete;

private:
    void set(const char* value) const {
        if (value == nullptr)
            unsetenv(name_);
        else
            setenv(name_, value, 1);
    }

    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace jx::test
