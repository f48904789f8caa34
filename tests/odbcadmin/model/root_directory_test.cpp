// Files below a root directory, and links that lead out of it.
#include "odbcadmin/model/root_directory.h"

#include <cstdlib>
#include <filesystem>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

namespace fs = std::filesystem;

class RootDirectoryTest : public ModelTest {
protected:
    RootDirectoryTest() {
        fs::create_directories(home_.file("image/etc"));
        fs::create_directories(home_.file("image/home/anna"));
        setenv("HOME", "/home/anna", 1);
    }

    const std::string image_ = home_.file("image");
};

TEST_F(RootDirectoryTest, AllFourFilesAreBelowIt) {
    setenv("ODBCINI", "/srv/odbc.ini", 1);
    setenv("ODBCINSTINI", "/srv/odbcinst.ini", 1);
    ASSERT_EQ(told(enterRoot(image_)), "");
    EXPECT_EQ(pathOf(".odbc.ini"), image_ + "/home/anna/.odbc.ini");
    EXPECT_EQ(pathOf(".odbcinst.ini"), image_ + "/home/anna/.odbcinst.ini");
    EXPECT_EQ(pathOf(".odbc.ini", Scope::system), image_ + "/etc/odbc.ini");
    EXPECT_EQ(pathOf(".odbcinst.ini", Scope::system), image_ + "/etc/odbcinst.ini");
}

TEST_F(RootDirectoryTest, ItMustBeADirectory) {
    EXPECT_EQ(
        told(enterRoot(home_.file("none"))),
        "file trouble: Cannot use ~/none as root: No such file or directory | Give --root a directory that exists.");
    EXPECT_EQ(told(enterRoot(home_.file(".odbc.ini"))),
              "file trouble: Cannot use ~/.odbc.ini as root: Not a directory | Give --root a directory that exists.");
}

TEST_F(RootDirectoryTest, LinksThatLeadOutOfItAreRefused) {
    const struct {
        const char* what;
        const char* link;
        std::string target;
        bool isAllowed;
    } rows[] = {
        {"a relative link inside", "image/etc/odbc.ini", "../opt/odbc.ini", true},
        {"an absolute link", "image/etc/odbc.ini", "/opt/odbc.ini", false},
        {"a relative link outside", "image/etc/odbc.ini", "../../../other.ini", false},
        {"a link to a link outside", "image/etc/odbc.ini", "../etc/second", false},
        {"a link to itself", "image/etc/odbc.ini", "odbc.ini", false},
        {"a linked directory", "image/home/anna", "/tmp", false},
    };
    fs::create_symlink("/opt/odbc.ini", home_.file("image/etc/second"));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        fs::remove_all(home_.file(row.link));
        fs::create_symlink(row.target, home_.file(row.link));
        setenv("HOME", "/home/anna", 1);
        const Reason reason = enterRoot(image_);
        EXPECT_EQ(reason.kind, row.isAllowed ? Reason::Kind::none : Reason::Kind::refused);
        fs::remove_all(home_.file(row.link));
        fs::create_directories(home_.file("image/home/anna"));
    }
}

TEST_F(RootDirectoryTest, APathBelowTheRootIsTheImagesOwn) {
    const std::string root = home_.file("image");
    std::filesystem::create_directories(root);
    std::filesystem::create_directory_symlink(root, home_.file("link"));
    struct Row {
        std::string root, path;
        std::optional<std::string> expected;
    };
    const Row rows[] = {
        {root, root + "/opt/libx.so", "/opt/libx.so"},
        {root + "/", root + "/opt/../usr/libx.so", "/usr/libx.so"},
        {home_.file("link"), root + "/libx.so", "/libx.so"},
        {home_.file("link"), home_.file("link/libx.so"), "/libx.so"},
        {root, root, "/"},
        {"/", "/opt/libx.so", "/opt/libx.so"},
        {"", "/opt/libx.so", "/opt/libx.so"},
        {root, root + "x/libx.so", std::nullopt},
        {root, root + "/../libx.so", std::nullopt},
        {root, "/opt/libx.so", std::nullopt},
        {root, "libx.so", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.root + " " + row.path);
        EXPECT_EQ(pathInImage(row.root, row.path), row.expected);
    }
}

}  // namespace
}  // namespace jx::model::test
