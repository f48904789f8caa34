// Makes configuration files of any size and folders that hold them.
#include "ini_files.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>
#include <utility>

namespace jx::bench {

namespace fs = std::filesystem;

namespace {

constexpr const char* kSubjects[] = {"Sales", "Orders", "Stock", "Customers", "Payroll", "Archive", "Reports"};

std::string padded(std::size_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::string subject(std::size_t number) {
    return kSubjects[number % std::size(kSubjects)];
}

std::string dataSourceName(std::size_t number) {
    return subject(number) + " " + padded(number, 5);
}

std::string driverName(std::size_t number) {
    return "Sample Driver " + padded(number, 5);
}

void addName(IniFile& file, const std::string& name, const std::string& value) {
    file.text += name + "=" + value + "\n";
    file.names += name;
    file.names += '\0';
}

void addSection(IniFile& file, const std::string& section,
                std::initializer_list<std::pair<const char*, std::string>> keys) {
    file.text += "\n[" + section + "]\n";
    for (const auto& [key, value] : keys) {
        file.text.append(key).append("=").append(value).append("\n");
        file.entries.push_back({section, key, value});
    }
}

}  // namespace

IniFile makeDataSources(std::size_t count) {
    IniFile file;
    file.text = "# Data sources of this account\n[ODBC Data Sources]\n";
    for (std::size_t i = 0; i < count; ++i)
        addName(file, dataSourceName(i), driverName(i % 5));
    for (std::size_t i = 0; i < count; ++i) {
        addSection(file, dataSourceName(i),
                   {{"Driver", "/opt/sample/lib/libsample.so"},
                    {"Description", subject(i) + " of branch " + std::to_string(i)},
                    {"Server", "db" + padded(i % 97, 2) + ".example.com"},
                    {"Port", std::to_string(5000 + i % 7)},
                    {"Database", "branch" + padded(i, 5)},
                    {"UserName", "report"},
                    {"ReadOnly", i % 3 == 0 ? "Yes" : "No"}});
    }
    file.text += "\n[ODBC]\nTrace=0\nTraceFile=sql.log\n";
    return file;
}

IniFile makeDrivers(std::size_t count) {
    IniFile file;
    file.text = "[ODBC Drivers]\n";
    for (std::size_t i = 0; i < count; ++i)
        addName(file, driverName(i), "Installed");
    for (std::size_t i = 0; i < count; ++i) {
        const std::string library = "/opt/sample/lib/libsample" + padded(i, 5);
        addSection(file, driverName(i),
                   {{"Driver", library + ".so"},
                    {"Setup", library + "setup.so"},
                    {"APILevel", "2"},
                    {"ConnectFunctions", "YYN"},
                    {"DriverODBCVer", "03.50"},
                    {"FileUsage", "0"},
                    {"SQLLevel", "1"}});
    }
    return file;
}

std::vector<IniEntry> spread(const IniFile& file, std::size_t count) {
    const std::size_t all = file.entries.size();
    const std::size_t wanted = std::min(count, all);
    std::vector<IniEntry> chosen;
    chosen.reserve(wanted);
    // The middle of each of the wanted stretches, so that their average place is the middle of the file.
    for (std::size_t i = 0; i < wanted; ++i)
        chosen.push_back(file.entries[(2 * i + 1) * all / (2 * wanted)]);
    return chosen;
}

void shuffle(std::vector<IniEntry>& entries) {
    std::uint64_t random = 88172645463325252U;
    for (std::size_t left = entries.size(); left > 1; --left) {
        random ^= random << 13U;
        random ^= random >> 7U;
        random ^= random << 17U;
        std::swap(entries[left - 1], entries[static_cast<std::size_t>(random % left)]);
    }
}

Folder::Folder() {
    std::string pattern = (fs::current_path() / "home-XXXXXX").string();
    if (const char* made = mkdtemp(pattern.data()); made != nullptr)
        path_ = made;
}

Folder::~Folder() {
    std::error_code ignored;
    if (!path_.empty())
        fs::remove_all(path_, ignored);
}

void Folder::becomeHome() const {
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
    setenv("HOME", path_.c_str(), 1);
}

bool putFile(const std::string& path, std::string_view text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    std::error_code failed;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, failed);
    return out.good() && !failed;
}

void letFilesSettle() {
    std::this_thread::sleep_for(std::chrono::seconds(3));
}

}  // namespace jx::bench
