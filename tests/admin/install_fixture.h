// The fixture of the installation dialogs' tests: a script and a record that names it.
#pragma once

#include <jxmemory.h>

#include "dialog_fixture.h"
#include "install/install_record.h"

namespace jx::test {

class InstallDialog : public DialogTest {
protected:
    InstallDialog() {
        putScript("[ODBC Drivers]\n\"Sample Driver\"=x\n\"Other\"\n\"Third, one\"=\n");
        install.infFile = ramAllocStr(reinterpret_cast<const unsigned char*>(script.c_str()));
    }
    ~InstallDialog() override {
        for (std::uint32_t item = 0; item < install.itemCount; ++item)
            ramFree(install.items[item].name);
        ramFree(install.items);
        ramFree(install.infFile);
    }

    void putScript(const std::string& text) const { home.put("odbc.inf", text); }

    Texts items() const {
        Texts names;
        for (std::uint32_t item = 0; item < install.itemCount; ++item) {
            EXPECT_EQ(install.items[item].kind, install::DriverItem);
            names.emplace_back(reinterpret_cast<char*>(install.items[item].name));
        }
        return names;
    }

    const std::string script = home.file("odbc.inf");
    install::_Install install{};
};

}  // namespace jx::test
