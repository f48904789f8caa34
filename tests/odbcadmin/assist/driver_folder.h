// A folder with a driver, the only one where drivers are looked for.
#pragma once

#include <filesystem>
#include <string>

#include "odbcadmin/assist/driver_form.h"
#include "test_home.h"

// The build says where the fixtures of the doctor's tests lie.
#ifndef JX_DOCTOR_FIXTURES
#define JX_DOCTOR_FIXTURES "."
#endif

namespace jx::test {

// DriverFolder: "lib" in a home folder; while it lives, drivers are looked for there, and nowhere afterwards.
class DriverFolder {
public:
    explicit DriverFolder(const TestHome& home) : folder_(home.file("lib")) {
        std::filesystem::create_directory(folder_);
        std::filesystem::copy_file(fixture("driver"), driver());
        assist::lookForDriversIn({folder_});
    }
    ~DriverFolder() { assist::lookForDriversIn({}); }
    DriverFolder(const DriverFolder&) = delete;
    DriverFolder& operator=(const DriverFolder&) = delete;

    // It connects with any data source but those called Refuse, Silent, Crash and Hang.
    std::string driver() const { return folder_ + "/libmydriver.so"; }

    // Puts a setup library beside it.
    std::string addSetup() const {
        const std::string path = folder_ + "/libmydriverS.so";
        std::filesystem::copy_file(fixture("setup"), path);
        return path;
    }

    static std::string fixture(const std::string& name) {
        return std::string(JX_DOCTOR_FIXTURES) + "/lib" + name + ".so";
    }

private:
    std::string folder_;
};

}  // namespace jx::test
