// The built libjxsetup.so, loaded as a program does it, and a home with a driver that uses it.
#pragma once

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include <odbcinst.h>
#include "attribute_list.h"
#include "test_home.h"

namespace jx::test {

inline constexpr char kDriver[] = "Sample Driver";

// The text of .odbcinst.ini in which kDriver is installed with libjxsetup.so as its setup library.
std::string installedDriver();

// SetupLibrary: keeps the library loaded during a test, in a home where kDriver is installed.
class SetupLibrary : public ::testing::Test {
protected:
    SetupLibrary();
    ~SetupLibrary() override;

    template <typename Routine>
    Routine* routine(const char* name) const {
        return reinterpret_cast<Routine*>(dlsym(library_, name));
    }

    // Calls the library's ConfigDSN itself, without a window unless one is given.
    BOOL configure(WORD request, const std::string& attributes, const char* driver = kDriver, HWND window = 0) const;
    BOOL add(const std::string& attributes, const char* driver = kDriver) const {
        return configure(ODBC_ADD_DSN, attributes, driver);
    }
    BOOL change(const std::string& attributes, const char* driver = kDriver) const {
        return configure(ODBC_CONFIG_DSN, attributes, driver);
    }
    BOOL remove(const std::string& attributes) const { return configure(ODBC_REMOVE_DSN, attributes); }

    std::string dataSources() const { return home.text(".odbc.ini"); }
    std::string drivers() const { return home.text(".odbcinst.ini"); }

    TestHome home;

private:
    void* library_;
};

}  // namespace jx::test
