// Any bytes as the keyword list of SQLInstallDriver: it is refused with nothing written, or the driver's entry is
// there.
#include <jxdialog.h>
#include <odbcinst.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "fuzz_check.h"
#include "watched_files.h"

namespace {

// FuzzHome: a home folder of this run; its files are not flushed.
class FuzzHome {
public:
    FuzzHome() {
        // In memory if possible: every input writes files.
        std::string pattern = std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/jxodbc-fuzz-XXXXXX";
        FUZZ_CHECK(mkdtemp(pattern.data()) != nullptr);
        path_ = pattern;
        setenv("HOME", path_.c_str(), 1);
        unsetenv("ODBCINI");
        unsetenv("ODBCINSTINI");
        static jx::ini::test::WatchedFiles files;
        jx::ini::useFiles(&files);
        JXW_SetMessageBoxHandler([](void*, HWND, const char*, const char*, unsigned int) { return unsigned{IDOK}; },
                                 nullptr);
    }
    ~FuzzHome() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    FuzzHome(const FuzzHome&) = delete;
    FuzzHome& operator=(const FuzzHome&) = delete;

    void clear() const {
        unlink((path_ + "/.odbc.ini").c_str());
        unlink((path_ + "/.odbcinst.ini").c_str());
    }
    bool isEmpty() const { return std::filesystem::is_empty(path_); }

private:
    std::string path_;
};

// A block of exactly the bytes that the function may read: up to the list's end, but at most 1024.
std::unique_ptr<char[]> listOf(const std::uint8_t* data, std::size_t size, std::size_t& listSize) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (size < 1024)
        bytes.append(2, '\0');
    listSize = std::min(bytes.size(), std::size_t{1024});
    auto list = std::make_unique<char[]>(listSize);
    std::memcpy(list.get(), bytes.data(), listSize);
    return list;
}

// A text that the store certainly accepts as a name or value: no line break, no blanks around it, nothing that begins a
// comment, not empty.
bool isPlain(const std::string& text) {
    return !text.empty() && text.find_first_of("\r\n;#") == std::string::npos && text.front() > ' ' &&
           text.back() > ' ';
}

// The second text of a list.
std::string textBehind(const std::string& list) {
    return list.c_str() + std::string(list.c_str()).size() + 1;
}

// A later key of the list may have replaced the entries, but the driver's section is there.
void checkSection(const std::string& description) {
    char keys[2048] = "";
    SQLGetPrivateProfileString(description.c_str(), nullptr, "", keys, sizeof keys, ".odbcinst.ini");
    FUZZ_CHECK(*keys != '\0');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzHome home;
    home.clear();
    std::size_t listSize = 0;
    const std::unique_ptr<char[]> list = listOf(data, size, listSize);
    const std::string before(list.get(), listSize);
    const auto pathSize = static_cast<WORD>(size % 3 == 0 ? 1 + size % 40 : 1024);
    const auto path = std::make_unique<char[]>(pathSize);
    WORD length = 0xFFFF;
    const BOOL result = SQLInstallDriver(nullptr, list.get(), path.get(), pathSize, &length);
    FUZZ_CHECK(result == TRUE || result == FALSE);
    FUZZ_CHECK(std::string(list.get(), listSize) == before);
    FUZZ_CHECK(length == 0xFFFF ? result == FALSE : length < pathSize && length == std::strlen(path.get()));
    if (result == FALSE) {
        FUZZ_CHECK(home.isEmpty());
    } else if (isPlain(before.c_str()) && isPlain(textBehind(before))) {
        checkSection(before.c_str());
    }
    return 0;
}
