// Texts of configuration files of any size, and folders used as a user's home.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jx::bench {

// IniEntry: one key of a generated file and the value a read must give.
struct IniEntry {
    std::string section;
    std::string key;
    std::string value;
};

// IniFile: a file's text and the keys of its sections in file order (those of the leading list left out).
struct IniFile {
    std::string text;
    std::vector<IniEntry> entries;
    std::string names;  // the leading list's keys, as a list read gives them: each name and its NUL
};

inline constexpr char kDataSourceFile[] = ".odbc.ini";
inline constexpr char kDriverFile[] = ".odbcinst.ini";
inline constexpr char kDataSourceList[] = "ODBC Data Sources";

// The texts of .odbc.ini and .odbcinst.ini with count data sources or drivers: the list of names, then a section of
// seven keys for each. 10 000 data sources are about 2 MB. Equal arguments give equal texts.
IniFile makeDataSources(std::size_t count);
IniFile makeDrivers(std::size_t count);

// count of the file's entries, evenly spread from its beginning to its end (all of them where there are fewer).
std::vector<IniEntry> spread(const IniFile& file, std::size_t count);

// The same entries in random order, the same in every run.
void shuffle(std::vector<IniEntry>& entries);

// Folder: a new directory in the current one, so on the same disk; removed with the object.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    // Absolute.
    std::string file(std::string_view name) const { return path_ + "/" + std::string(name); }
    const std::string& path() const { return path_; }

    // Sets HOME of this process to this folder.
    void becomeHome() const;

private:
    std::string path_;
};

// Writes a whole file with mode 0600; false when that failed.
bool putFile(const std::string& path, std::string_view text);

// Waits until files written before this call are older than the time within which a further change of them might not
// show in their state.
void letFilesSettle();

}  // namespace jx::bench
