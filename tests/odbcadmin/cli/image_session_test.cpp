// --root: each verb that works on the files of an image, and paths as the image has them.
#include <sys/stat.h>

#include <filesystem>

#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

namespace fs = std::filesystem;

class ImageSession : public AdminTest {
protected:
    ImageSession() {
        fs::create_directories(home_.file("image/opt/pack/lib"));
        fs::create_directories(home_.file("image/opt/pack/share/pack"));
        fs::create_directories(home_.file("image/etc"));
        fs::create_directories(home_.file("image/home/anna"));
        fs::copy(JX_DRIVER, home_.file("image/opt/pack/lib/libacme.so"));
        home_.put("image/opt/pack/share/pack/odbcinst.ini", "[Acme]\nDriver=libacme.so\nDebug=0\n");
        home_.put("image/opt/pack/odbc.inf",
                  "[ODBC Drivers]\n\"Acme\"=\n[Acme]\n\"Driver\"=1,libacme.so,,,,2024-01-15,,,,,,,,,,0,,,,,\n"
                  "[Acme-Keys]\nCreateDSN=Notes\n");
    }
    ~ImageSession() override {
        EXPECT_EQ(sources(), kSources);
        EXPECT_EQ(drivers(), kDrivers);
    }

    std::string text(const std::string& name) const { return home_.text("image/" + name); }
};

constexpr const char* kInstalling =
    R"sh($ odbcadmin --root image --system install image/opt/pack/odbc.inf --from /opt/pack/lib --check
would change: ~/image/etc/odbcinst.ini, ~/image/etc/odbc.ini
[9]
$ ls -A image/etc
$ umask 022; odbcadmin --root image --system install image/opt/pack/odbc.inf --from /opt/pack/lib
driver       Acme   added  /opt/pack/lib/libacme.so  ok
data source  Notes  added  Acme
Installed from ~/image/opt/pack/odbc.inf
$ cat image/etc/odbcinst.ini image/etc/odbc.ini; stat -c %a image/etc/*.ini
[ODBC Drivers]
Acme=Installed

[Acme]
Driver=/opt/pack/lib/libacme.so
[ODBC Data Sources]
Notes=Acme

[Notes]
Driver=/opt/pack/lib/libacme.so
644
644
$ odbcadmin --root image --system install image/opt/pack/odbc.inf --from image/opt/pack/lib
driver  Acme  unchanged  /opt/pack/lib/libacme.so  ok
unchanged: nothing to do
$ odbcadmin --root image/ --home /home/anna install image/opt/pack/odbc.inf -q && tail -1 image/home/anna/.odbcinst.ini
Driver=/opt/pack/libacme.so
$ mkdir out && cp image/opt/pack/odbc.inf out
$ odbcadmin --root image --system install out/odbc.inf
! odbcadmin: ~/out/odbc.inf does not lie in the image ~/image
!   Give --from the directory of the image where the libraries lie.
[2]
$ odbcadmin --root image --system install out/odbc.inf --from /opt/none
! odbcadmin: There is no directory ~/image/opt/none
!   Give --from the directory where the libraries lie.
[7]
)sh";

TEST_F(ImageSession, AScriptsLibrariesAreEnteredAsTheImageHasThem) {
    EXPECT_EQ(played(home_, kInstalling), kInstalling);
}

constexpr const char* kAdding = R"sh($ odbcadmin --root image driver scan | grep pack
odbcadmin --root ~/image driver add Acme --lib /opt/pack/lib/libacme.so Debug=0
$ odbcadmin --root image --system driver scan -q image/opt/pack/lib
/opt/pack/lib/libacme.so
$ odbcadmin --root image --system driver add -f image/opt/pack/share/pack/odbcinst.ini
Registered driver Acme from ~/image/opt/pack/share/pack/odbcinst.ini
$ cat image/etc/odbcinst.ini
[ODBC Drivers]
Acme=Installed

[Acme]
Driver=/opt/pack/lib/libacme.so
Debug=0
$ odbcadmin --root image driver scan image/opt/pack/lib | head -1
# /opt/pack/lib/libacme.so is registered: Acme, ~/image/etc/odbcinst.ini:5
! odbcadmin: All drivers found are registered already: ~/image/opt/pack/lib
$ odbcadmin --root image --system driver adopt Acme --in image/opt/pack/lib -q && odbcadmin --root image --home /home/anna --user driver adopt image/opt/pack/lib/libacme.so --in image/opt/pack/lib
Registered driver Acme
$ odbcadmin --root image --home /home/anna driver add Own --lib image/opt/pack/lib/libacme.so -q; odbcadmin --root image driver set Own --user Setup=image/opt/pack/lib/libacme.so --home /home/anna -q
$ odbcadmin --root image --home /home/anna driver show Own -q
[Own]
Driver=/opt/pack/lib/libacme.so
Setup=/opt/pack/lib/libacme.so
$ mkdir -p host/share/pack host/lib && mv image/opt/pack/lib/libacme.so host/lib && cp image/opt/pack/share/pack/odbcinst.ini host/share/pack
$ odbcadmin --root image --system driver add -f host/share/pack/odbcinst.ini
! odbcadmin: The library was not found where drivers are installed: Acme (libacme.so)
!   Install the driver's package, or register it with --lib.
[3]
)sh";

TEST_F(ImageSession, DriversAreFoundInTheImageAndNotOnThisSystem) {
    EXPECT_EQ(played(home_, kAdding), kAdding);
}

constexpr const char* kLinting =
    R"sh($ odbcadmin --root image --system driver add Acme --lib /opt/pack/lib/libacme.so -q
$ odbcadmin --root image --system dsn add Sales --driver Acme -q
$ odbcadmin --root image --home /home/anna lint -q
note files.missing ~/image/home/anna/.odbc.ini
note files.system-wide-ignored ~/image/etc/odbc.ini
note files.missing ~/image/home/anna/.odbcinst.ini
note files.system-wide-ignored ~/image/etc/odbcinst.ini
note names.no-setup-key driver Acme
$ odbcadmin --root image --home /home/none --system lint -q
note files.system-wide-ignored ~/image/etc/odbc.ini
note files.system-wide-ignored ~/image/etc/odbcinst.ini
note names.no-setup-key driver Acme
)sh";

TEST_F(ImageSession, LintSaysNothingOfThisSystemsVariablesAndHomes) {
    EXPECT_EQ(played(home_, kLinting), kLinting);
}

constexpr const char* kMending = R"sh($ mv image/opt/pack/lib image/opt/pack/lib64 && mkdir image/opt/pack/lib
$ odbcadmin --root image --system driver add Acme --lib /opt/pack/lib/libacme.so -q
$ odbcadmin --root image --system driver add True --lib /bin/true --no-setup -q
$ odbcadmin --root image --system lint --fix | head -1
Fixed ~/image/etc/odbcinst.ini:6: the path of Driver, which is /opt/pack/lib64/libacme.so now
)sh";

TEST_F(ImageSession, LibrariesThatMovedAreLookedForInTheImage) {
    EXPECT_EQ(played(home_, kMending), kMending);
}

constexpr const char* kWorkingOnAnImage =
    R"sh($ cp /bin/true image/opt/libimage.so
$ HOME=/home/anna odbcadmin --root image driver add Image --lib /opt/libimage.so --system
Added driver Image
! odbcadmin: the library /opt/libimage.so cannot be used; see odbcadmin driver check
$ HOME=/home/anna odbcadmin --root image dsn add Stock --driver Image Server=db1 --system -q
$ HOME=/home/anna odbcadmin --root image dsn add Mine --driver Image Server=db2
Added data source Mine
! odbcadmin: written directly: Image has no setup library
$ odbcadmin --root image --home /home/anna dsn list
Mine   Image  user
Stock  Image  system
$ find image -name "*.ini" -o -name "libi*" | grep -v share | sort
image/etc/odbc.ini
image/etc/odbcinst.ini
image/home/anna/.odbc.ini
image/opt/libimage.so
$ odbcadmin --root image --home /home/anna -q paths
~/image/home/anna/.odbc.ini
~/image/etc/odbc.ini
~/image/home/anna/.odbcinst.ini
~/image/etc/odbcinst.ini
$ odbcadmin --root image --home /home/anna paths | head -4 | sed "s/$(id -un):$(id -gn)/OWNER/; s/by $(id -un)/by OWNER/"
.odbc.ini (user)
  * ~/image/home/anna/.odbc.ini      -rw------- OWNER, read by OWNER only  below the root ~/image
odbc.ini (system)
  * ~/image/etc/odbc.ini             -rw-r--r-- OWNER, read by everybody  below the root ~/image
$ odbcadmin --root image dsn test Stock
! odbcadmin: dsn test works with the libraries of this system, not of another root
!   odbcadmin lint --root looks at the files of an image.
[2]
$ odbcadmin --root image run -- true
! odbcadmin: run works with the libraries of this system, not of another root
!   odbcadmin lint --root looks at the files of an image.
[2]
$ rm image/etc/odbc.ini && ln -s ~/.odbc.ini image/etc/odbc.ini
$ odbcadmin --root image dsn add X --driver Image --system
! odbcadmin: A symbolic link leads from ~/image/etc/odbc.ini out of ~/image
!   Replace the link by a relative one, or by the file itself.
[5]
$ odbcadmin --root nowhere dsn list
! odbcadmin: Cannot use nowhere as root: No such file or directory
!   Give --root a directory that exists.
[7]
)sh";

TEST_F(ImageSession, WorkingOnAnImageLeavesTheFilesOutsideAlone) {
    EXPECT_EQ(played(home_, kWorkingOnAnImage), kWorkingOnAnImage);
    EXPECT_FALSE(fs::exists(home_.systemPath()) && !fs::is_empty(home_.systemPath()));
}

}  // namespace
}  // namespace jx::test
