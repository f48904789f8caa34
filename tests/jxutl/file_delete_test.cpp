// Deleting files: what is deleted and what is refused, above all the product's libraries under any name.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include <jxfiles.h>
#include "test_home.h"
#include "unprivileged.h"

namespace {

namespace fs = std::filesystem;
using jx::test::TestHome;
using Names = std::vector<std::string>;
using Delete = decltype(&bosFileDelete);

// 0, or the errno with which nothing was deleted.
int refusal(const std::string& path, Delete deletes = bosFileDelete) {
    errno = 0;
    const int result = deletes(reinterpret_cast<const unsigned char*>(path.c_str()));
    const int reason = errno;
    if (result == 0)
        return 0;
    EXPECT_EQ(result, -1);
    EXPECT_NE(reason, 0);
    return reason;
}

TEST(FileDelete, DeletesARegularFile) {
    const TestHome home{{"a", "text"}, {"b", ""}};
    EXPECT_EQ(refusal(home.file("a")), 0);
    EXPECT_EQ(home.names(), Names{"b"});
}

TEST(FileDelete, AnAbsentFileIsNotDeleted) {
    const TestHome home{{"a", ""}};
    EXPECT_EQ(refusal(home.file("absent")), ENOENT);
    EXPECT_EQ(refusal(home.file("absent/b")), ENOENT);
    EXPECT_EQ(refusal(home.file("a/b")), ENOTDIR);
    EXPECT_EQ(refusal(home.file("a/")), ENOTDIR);
    EXPECT_EQ(home.names(), Names{"a"});
}

TEST(FileDelete, NullAndEmptyPathsAreRefused) {
    errno = 0;
    EXPECT_EQ(bosFileDelete(nullptr), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(refusal(""), EINVAL);
}

// A socket's file, which stays when the socket is closed.
void makeSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int made = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(bind(made, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(made);
}

TEST(FileDelete, NothingButARegularFileIsDeleted) {
    const TestHome home;
    fs::create_directory(home.file("directory"));
    ASSERT_EQ(mkfifo(home.file("fifo").c_str(), 0600), 0);
    makeSocket(home.file("socket"));
    EXPECT_EQ(refusal(home.file("directory")), EISDIR);
    EXPECT_EQ(refusal(home.file("directory/")), EISDIR);
    EXPECT_EQ(refusal(home.file("fifo")), EINVAL);
    EXPECT_EQ(refusal(home.file("socket")), EINVAL);
    EXPECT_EQ(home.names(), (Names{"directory", "fifo", "socket"}));
}

TEST(FileDelete, DeletingALinkToARegularFileKeepsTheFile) {
    const TestHome home{{"file", "text"}};
    fs::create_symlink("file", home.file("link"));
    EXPECT_EQ(refusal(home.file("link")), 0);
    EXPECT_EQ(home.names(), Names{"file"});
    EXPECT_EQ(home.text("file"), "text");
}

TEST(FileDelete, LinksToAnythingElseStay) {
    const TestHome home;
    fs::create_directory(home.file("directory"));
    ASSERT_EQ(mkfifo(home.file("fifo").c_str(), 0600), 0);
    fs::create_symlink("directory", home.file("to-directory"));
    fs::create_symlink("fifo", home.file("to-fifo"));
    fs::create_symlink("nowhere", home.file("to-nowhere"));
    fs::create_symlink("to-itself", home.file("to-itself"));
    EXPECT_EQ(refusal(home.file("to-directory")), EISDIR);
    EXPECT_EQ(refusal(home.file("to-fifo")), EINVAL);
    EXPECT_EQ(refusal(home.file("to-nowhere")), ENOENT);
    EXPECT_EQ(refusal(home.file("to-itself")), ELOOP);
    EXPECT_EQ(home.names().size(), 6U);
}

TEST(FileDelete, TheSystemsRefusalIsReported) {
    const TestHome home;
    fs::permissions(home.path(), fs::perms(0755));
    fs::create_directory(home.file("guarded"));
    home.put("guarded/f", "");
    fs::permissions(home.file("guarded"), fs::perms(0555));
    EXPECT_EQ(jx::test::asNobody([&home] { return refusal(home.file("guarded/f")); }), EACCES);
    EXPECT_TRUE(fs::exists(home.file("guarded/f")));
}

// Installed: a copy of the utility library in a new directory, with empty files for the libraries beside it.
class Installed {
public:
    Installed() {
        fs::create_directory(home.file("lib"));
        fs::copy_file(JX_UTILITY_LIBRARY, home.file("lib/libjxutl08.so"));
        for (const char* name : {"lib/libodbcinst.so.1", "lib/libjxsetup.so", "lib/libdriver.so", "libjxsetup.so"})
            home.put(name, "a library");
        fs::create_symlink("libodbcinst.so.1", home.file("lib/libodbcinst.so"));
    }

    // Loads the copy; it stays loaded until the program ends.
    Delete load(const std::string& path) const {
        void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(library, nullptr) << dlerror();
        return library != nullptr ? reinterpret_cast<Delete>(dlsym(library, "bosFileDelete")) : nullptr;
    }

    bool isComplete() const {
        bool complete = true;
        for (const char* name :
             {"lib/libjxutl08.so", "lib/libodbcinst.so.1", "lib/libodbcinst.so", "lib/libjxsetup.so"})
            complete = complete && fs::exists(fs::symlink_status(home.file(name)));
        return complete;
    }

    const TestHome home;
};

TEST(FileDelete, TheProductsLibrariesStay) {
    const Installed product;
    const Delete deletes = product.load(product.home.file("lib/libjxutl08.so"));
    ASSERT_NE(deletes, nullptr);
    for (const char* name : {"lib/libjxutl08.so", "lib/libodbcinst.so.1", "lib/libodbcinst.so", "lib/libjxsetup.so"})
        EXPECT_EQ(refusal(product.home.file(name), deletes), EPERM) << name;
    EXPECT_TRUE(product.isComplete());
}

TEST(FileDelete, NoSpellingAndNoLinkHidesAProductLibrary) {
    const Installed product;
    const Delete deletes = product.load(product.home.file("lib/libjxutl08.so"));
    ASSERT_NE(deletes, nullptr);
    fs::create_symlink("lib", product.home.file("other"));
    fs::create_symlink("lib/libjxsetup.so", product.home.file("soft.so"));
    fs::create_hard_link(product.home.file("lib/libodbcinst.so.1"), product.home.file("hard.so"));
    for (const char* name : {"lib//libjxsetup.so", "lib/./libjxsetup.so", "lib/../lib/libjxsetup.so",
                             "other/libjxutl08.so", "other/libodbcinst.so", "soft.so", "hard.so"})
        EXPECT_EQ(refusal(product.home.file(name), deletes), EPERM) << name;
    EXPECT_TRUE(product.isComplete());
    EXPECT_TRUE(fs::exists(product.home.file("soft.so")));
    EXPECT_TRUE(fs::exists(product.home.file("hard.so")));
}

TEST(FileDelete, AProductWithoutTheLinkForDevelopersStaysToo) {
    const Installed product;
    fs::remove(product.home.file("lib/libodbcinst.so"));
    const Delete deletes = product.load(product.home.file("lib/libjxutl08.so"));
    ASSERT_NE(deletes, nullptr);
    EXPECT_EQ(refusal(product.home.file("lib/libodbcinst.so.1"), deletes), EPERM);
    EXPECT_TRUE(fs::exists(product.home.file("lib/libodbcinst.so.1")));
}

TEST(FileDelete, DeletesOtherLibrariesBesideAndEqualNamesElsewhere) {
    const Installed product;
    const Delete deletes = product.load(product.home.file("lib/libjxutl08.so"));
    ASSERT_NE(deletes, nullptr);
    EXPECT_EQ(refusal(product.home.file("lib/libdriver.so"), deletes), 0);
    EXPECT_EQ(refusal(product.home.file("libjxsetup.so"), deletes), 0);
    EXPECT_FALSE(fs::exists(product.home.file("lib/libdriver.so")));
    EXPECT_FALSE(fs::exists(product.home.file("libjxsetup.so")));
    EXPECT_TRUE(product.isComplete());
}

TEST(FileDelete, AChangeOfDirectoryDoesNotLoseTheProductsPlace) {
    const Installed product;
    const fs::path before = fs::current_path();
    fs::current_path(product.home.file("lib"));
    const Delete deletes = product.load("./libjxutl08.so");
    fs::current_path(before);
    ASSERT_NE(deletes, nullptr);
    EXPECT_EQ(refusal(product.home.file("lib/libjxsetup.so"), deletes), EPERM);
    EXPECT_EQ(refusal(product.home.file("lib/libjxutl08.so"), deletes), EPERM);
    EXPECT_TRUE(product.isComplete());
}

TEST(FileDelete, TheUtilityLibraryStaysUnderAnotherName) {
    const Installed product;
    fs::rename(product.home.file("lib/libjxutl08.so"), product.home.file("lib/renamed.so"));
    const Delete deletes = product.load(product.home.file("lib/renamed.so"));
    ASSERT_NE(deletes, nullptr);
    EXPECT_EQ(refusal(product.home.file("lib/renamed.so"), deletes), EPERM);
    EXPECT_EQ(refusal(product.home.file("lib/libjxsetup.so"), deletes), EPERM);
}

}  // namespace
