// Makes and removes a test's own home directory.
#include "test_home.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace jx::test {

namespace fs = std::filesystem;

namespace {
void write(const std::string& path, std::string_view text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::string whole(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return "(absent)";
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

constexpr const char* kVariables[] = {"HOME", "ODBCINI", "ODBCINSTINI", "ODBCSYSINI"};
}  // namespace

TestHome::TestHome() : oldMask_(::umask(S_IWGRP | S_IWOTH)) {
    std::string pattern = (fs::temp_directory_path() / "jxodbc-test-XXXXXX").string();
    const char* made = mkdtemp(pattern.data());
    if (made == nullptr) {
        ADD_FAILURE() << "no test directory at " << pattern;
        return;
    }
    path_ = made;
    for (const char* name : kVariables) {
        const char* value = std::getenv(name);
        if (value != nullptr)
            oldVariables_.emplace_back(name, value);
        else
            unsetVariables_.emplace_back(name);
        unsetenv(name);
    }
    setenv("HOME", path_.c_str(), 1);
    setenv("ODBCSYSINI", systemPath().c_str(), 1);
    std::error_code ignored;
    fs::create_directory(systemPath(), ignored);
}

TestHome::TestHome(std::initializer_list<std::pair<std::string_view, std::string_view>> files) : TestHome() {
    for (const auto& [name, text] : files)
        put(name, text);
}

TestHome::~TestHome() {
    ::umask(oldMask_);
    for (const auto& [name, value] : oldVariables_)
        setenv(name.c_str(), value.c_str(), 1);
    for (const std::string& name : unsetVariables_)
        unsetenv(name.c_str());
    std::error_code ignored;
    if (path_.empty())
        return;
    fs::remove_all(path_, ignored);
    fs::remove_all(systemPath(), ignored);
}

void TestHome::put(std::string_view name, std::string_view text) const {
    write(file(name), text);
    std::error_code ignored;
    fs::permissions(file(name), fs::perms::owner_read | fs::perms::owner_write, ignored);
}

std::string TestHome::text(std::string_view name) const {
    return whole(file(name));
}

// As root makes it: everybody may read it.
void TestHome::putSystem(std::string_view name, std::string_view text) const {
    write(systemFile(name), text);
    std::error_code ignored;
    constexpr auto kAll = static_cast<fs::perms>(0644);
    fs::permissions(systemFile(name), kAll, ignored);
}

std::string TestHome::systemText(std::string_view name) const {
    return whole(systemFile(name));
}

std::vector<std::string> TestHome::names() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(path_))
        found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace jx::test
