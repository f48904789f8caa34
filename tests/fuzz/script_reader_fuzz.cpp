// Any bytes as an installation script: what is read is complete and within its bounds, and can be installed.
#include <jxdialog.h>
#include <jxmemory.h>
#include <jxprofile.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "config/text_bytes.h"
#include "fuzz_check.h"
#include "install/batch_installation.h"
#include "install/installation_paths.h"
#include "install/item_installation.h"
#include "install/script_entries.h"
#include "install/script_items.h"
#include "watched_files.h"

namespace {

using namespace jx::install;
using jx::asBytes;

// FarFuture: the real disk with a clock far ahead, so that every look-up trusts the file's stamp.
class FarFuture : public jx::ini::test::WatchedFiles {
public:
    timespec fileClock() override { return {1'000'000'000'000, 0}; }
};

// MemoryScript: a file in memory; each text has another stamp.
class MemoryScript {
public:
    MemoryScript() : fd_(memfd_create("odbc.inf", 0)), path_("/proc/self/fd/" + std::to_string(fd_)) {
        static FarFuture files;
        jx::ini::useFiles(&files);
        // Only reading is tested: writes fail at their directory.
        setenv("ODBCINI", "/no such directory/odbc.ini", 1);
        setenv("ODBCINSTINI", "/no such directory/odbcinst.ini", 1);
        JXW_SetMessageBoxHandler([](void*, HWND, const char*, const char*, unsigned int) { return unsigned{IDOK}; },
                                 nullptr);
    }

    void put(const std::uint8_t* data, std::size_t size) {
        ++texts_;
        const timespec stamp[2] = {{texts_, 0}, {texts_, 0}};
        FUZZ_CHECK(fd_ >= 0 && ftruncate(fd_, 0) == 0 && pwrite(fd_, data, size, 0) == static_cast<ssize_t>(size) &&
                   futimens(fd_, stamp) == 0);
    }

    const unsigned char* path() const { return asBytes(path_.c_str()); }

private:
    int fd_;
    std::string path_;
    time_t texts_ = 0;
};

std::string_view textOf(const unsigned char* text) {
    return text == nullptr ? std::string_view{} : std::string_view(jx::asChars(text));
}

void checkEntry(const InfEntry& entry) {
    FUZZ_CHECK(textOf(entry.key).find('"') == std::string_view::npos);
    for (const unsigned char* text : {entry.fileName, entry.text8, entry.text14}) {
        FUZZ_CHECK(text == nullptr || !textOf(text).empty());
        FUZZ_CHECK(textOf(text).find(',') == std::string_view::npos && !textOf(text).starts_with(' '));
        FUZZ_CHECK(textOf(text).size() < 1024);
    }
    FUZZ_CHECK(entry.key != nullptr || (entry.fileName == nullptr && entry.text8 == nullptr));
    FUZZ_CHECK(entry.dateYear > -1000 && entry.dateYear < 10000 && entry.version[0] > -10 && entry.version[0] < 100);
}

void checkRecord(const _Install& install) {
    FUZZ_CHECK((install.itemCount == 0) == (install.items == nullptr));
    for (const InstallItem& item : itemsOf(install)) {
        FUZZ_CHECK(item.name != nullptr && item.kind <= TranslatorItem);
        FUZZ_CHECK((item.entryCount == 0) == (item.entries == nullptr) && item.entryCount < 512);
        for (const unsigned char* key : item.driverKeys)
            FUZZ_CHECK(textOf(key).size() < 1024);
        for (const InfEntry& entry : entriesOf(item))
            checkEntry(entry);
    }
}

// The list of drivers: the script's sections, and one that it probably does not have.
std::string driversOf(const MemoryScript& script) {
    char sections[256] = {};
    const int length = jxGetPrivateProfileString(nullptr, nullptr, nullptr, asBytes(sections), 200, script.path());
    return std::string("\"Quoted\"=x\0", 11) + std::string(sections, static_cast<std::size_t>(length)) +
           std::string(2, '\0');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MemoryScript script;
    script.put(data, size);
    std::string drivers = driversOf(script);
    _Install* install = nullptr;
    if (InstallInit(0, install, nullptr, nullptr) != 0 || !takePaths(*install, script.path(), asBytes("/cdrom")))
        return 0;
    PlaceDriversToBeInstalledInInstallStruct(install, asBytes(drivers.data()));
    GetTheDriverKeys(install);
    PlaceTranslatorsToBeInstalledInInstallStruct(install);
    GetTheNonDriverItems(install);
    GetTheOdbcInfEntriesForEachItem(install);
    checkRecord(*install);
    for (InstallItem& item : itemsOf(*install))
        item.selected = 1;
    FUZZ_CHECK(InstallItems(0, install) == 1);
    InstallTerm(install);
    ramFree(install);
    return 0;
}
