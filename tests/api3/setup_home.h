// An InstallerHome with drivers whose setup libraries are those of the tests.
#pragma once

#include <string>

#include "installer_home.h"

namespace jx::test {

// SetupHome: the system's file registers Narrow, Wide, DsnOnly, None, Missing, Plain and Shared, each with the setup
// library of that name; does is what their routines do.
class SetupHome {
public:
    explicit SetupHome(const char* does = "")
        : calls_("JX_SETUP_CALLS", home_.file("calls")), does_("JX_SETUP_DOES", does) {
        home_.put(kSystemDrivers, driver("Narrow", "narrow") + driver("Wide", "wide") + driver("DsnOnly", "dsn_only") +
                                      driver("None", "none") +
                                      "[Missing]\nDriver=/opt/missing.so\nSetup=/opt/missing-setup.so\n"
                                      "[Plain]\nDriver=/opt/plain.so\n");
    }

    const InstallerHome& files() const { return home_; }
    std::string file(std::string_view name) const { return home_.file(name); }
    std::string text(std::string_view name) const { return home_.text(name); }
    void put(std::string_view name, std::string_view text) const { home_.put(name, text); }

    // What the routines wrote down, a line a call; "" when none was called.
    std::string calls() const {
        const std::string written = home_.text("calls");
        return written == "(absent)" ? "" : written;
    }

private:
    static std::string driver(const std::string& name, const std::string& setup);

    InstallerHome home_;
    TestVariable calls_;
    TestVariable does_;
};

}  // namespace jx::test
