// Each fault of a library, built for real, and the findings about it, whole.
#include "odbcadmin/doctor/library_checks.h"

#include <elf.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "doctor_fixture.h"
#include "jxutl/ini/child_process.h"
#include "odbcadmin/doctor/path_mistakes.h"

namespace jx::doctor::test {
namespace {

namespace fs = std::filesystem;

TEST(LibraryChecks, FindNothingAboutAGoodDriverAndAGoodSetupLibrary) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libdriver.so"), LibraryRole::driver), "");
    EXPECT_EQ(home.check(home.take("libdriver_old.so"), LibraryRole::driver), "");
    EXPECT_EQ(home.check(home.take("libdriver_wide.so"), LibraryRole::driver), "");
    EXPECT_EQ(home.check(home.take("libsetup.so")), "");
}

TEST(LibraryChecks, AMissingLibraryIsToldWithWhatLiesBesideIt) {
    const DoctorHome home;
    home.take("libsetup.so", "libsetup.so.2");
    EXPECT_EQ(home.check(home.file("libsetup.so.1")),
              "error library.missing X\n"
              "  There is no ~/libsetup.so.1; its directory is there. Beside it: libsetup.so.2.\n"
              "  Install the library there, or correct the path.\n");
}

TEST(LibraryChecks, TheFirstMissingDirectoryIsNamed) {
    const DoctorHome home;
    fs::create_directories(home.file("opt/acme"));
    EXPECT_EQ(home.check(home.file("opt/acmee/lib/libx.so")),
              "error library.directory-missing X\n"
              "  There is no directory ~/opt/acmee; ~/opt is there. Beside it: acme.\n"
              "  Install the library, or correct the path from that directory on.\n");
    home.put("file", "");
    EXPECT_EQ(home.check(home.file("file/libx.so")),
              "error library.directory-missing X\n  ~/file is not a directory.\n  Correct the path.\n");
}

TEST(LibraryChecks, ADanglingLinkAndALoopAreToldWithTheirTargets) {
    const DoctorHome home;
    fs::create_symlink("libsetup.so.9", home.file("libsetup.so"));
    fs::create_symlink("loop", home.file("loop"));
    EXPECT_EQ(home.check(home.file("libsetup.so")),
              "error library.dangling-link X\n"
              "  ~/libsetup.so is a symbolic link to libsetup.so.9, which is not there.\n"
              "  Make the link anew to the library that is installed, or install what it points to.\n");
    EXPECT_EQ(home.check(home.file("loop/libx.so")),
              "error library.dangling-link X\n"
              "  ~/loop is a symbolic link to loop, which leads back to itself.\n"
              "  Make the link anew to the library that is installed, or install what it points to.\n");
}

// The rest of the sentence names the owner, whose name depends on the account.
TEST(LibraryChecks, AClosedDirectoryAndAnUnreadableFileAreTold) {
    const DoctorHome home;
    home.openToAll();
    const std::string inside = home.take("libsetup.so", "closed/libsetup.so");
    const std::string unreadable = home.take("libsetup.so", "libunreadable.so");
    ::chmod(home.file("closed").c_str(), 0);
    ::chmod(unreadable.c_str(), 0);
    const std::string user = std::to_string(::geteuid() == 0 ? 65534 : ::geteuid());
    const bool passed = jx::ini::test::passesAsNobody([&] {
        const std::string closed = home.check(inside);
        EXPECT_TRUE(closed.starts_with("error library.directory-closed X\n  The directory ~/closed (d--------- "))
            << closed;
        const std::string file = home.check(unreadable);
        EXPECT_TRUE(file.starts_with("error library.unreadable X\n  ~/libunreadable.so (---------- ")) << file;
        EXPECT_NE(file.find("(" + user + "): Permission denied.\n"), std::string::npos) << file;
    });
    ::chmod(home.file("closed").c_str(), 0700);
    EXPECT_TRUE(passed);
}

TEST(LibraryChecks, WhatIsNoRegularFileIsToldWithoutWaiting) {
    const DoctorHome home;
    ASSERT_EQ(::mkfifo(home.file("fifo").c_str(), 0600), 0);
    EXPECT_EQ(home.check(home.path()),
              "error library.not-regular X\n  ~ is a directory.\n  Give the path of the library file itself.\n");
    EXPECT_EQ(home.check(home.file("fifo")),
              "error library.not-regular X\n  ~/fifo is a pipe, socket or device.\n"
              "  Give the path of the library file itself.\n");
}

TEST(LibraryChecks, AnArchiveIsTold) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libarchive.a")),
              "error library.archive X\n"
              "  ~/libarchive.a is a static archive; only linkers can use it.\n"
              "  Give the path of the shared library (.so) of the same product.\n"
              "note library.loader-says X\n"
              "  The loader says: ~/libarchive.a: invalid ELF header\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, ALinkerScriptIsToldWithTheLibraryItStandsFor) {
    const DoctorHome home;
    home.put("libc.so", "/* GNU ld script */\nOUTPUT_FORMAT(elf64-x86-64)\nGROUP ( /lib/libc.so.6 /lib/libc.a )\n");
    EXPECT_EQ(home.check(home.file("libc.so")),
              "error library.linker-script X\n"
              "  ~/libc.so is a linker script, which stands in for a library while programs are built.\n"
              "  Give the path of the library it stands for: /lib/libc.so.6.\n"
              "note library.loader-says X\n"
              "  The loader says: ~/libc.so: invalid ELF header\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, OtherFilesAreToldByTheirContent) {
    const DoctorHome home;
    home.put("text", "Driver=/opt/libx.so\n");
    home.put("empty", "");
    home.put("bytes", std::string("\0\1\2\3", 4));
    const std::string refused = "note library.loader-says X\n  The loader says: ~/";
    EXPECT_EQ(home.check(home.file("text")),
              "error library.text X\n  ~/text is a text file.\n  Give the path of the library itself.\n" + refused +
                  "text: file too short\n  Programs show this sentence; the cause is above.\n");
    EXPECT_EQ(home.check(home.file("empty")),
              "error library.empty X\n  ~/empty is empty.\n  Install it again.\n" + refused +
                  "empty: file too short\n  Programs show this sentence; the cause is above.\n");
    EXPECT_EQ(home.check(home.file("bytes")),
              "error library.not-elf X\n  ~/bytes is not an ELF file, so it is not a library of this system.\n"
              "  Install the product's files for Linux and give the path of its shared library.\n" +
                  refused + "bytes: file too short\n  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, AFileThatWasCutIsTold) {
    const DoctorHome home;
    const std::string path = home.take("libsetup.so");
    fs::resize_file(path, 100);
    EXPECT_EQ(home.check(path),
              "error library.cut-short X\n"
              "  ~/libsetup.so ends before what its header announces.\n"
              "  It was copied or downloaded in part: install it again.\n");
}

TEST(LibraryChecks, AFileThatWasCutInItsCodeIsNotLoaded) {
    const DoctorHome home;
    const std::string path = home.take("libsetup.so");
    fs::resize_file(path, 4096);
    EXPECT_EQ(home.check(path),
              "error library.cut-short X\n"
              "  ~/libsetup.so ends before what its header announces.\n"
              "  It was copied or downloaded in part: install it again.\n");
}

TEST(LibraryChecks, AnObjectFileIsTold) {
    const DoctorHome home;
    fs::copy_file(JX_DOCTOR_OBJECT, home.file("x.o"));
    EXPECT_EQ(home.check(home.file("x.o")),
              "error library.not-shared X\n"
              "  ~/x.o is an object file, not a shared library.\n"
              "  Give the path of the shared library (.so).\n"
              "note library.loader-says X\n"
              "  The loader says: ~/x.o: only ET_DYN and ET_EXEC can be loaded\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, AProgramIsTold) {
    const DoctorHome home;
    const std::string path = home.take("libsetup.so");
    constexpr std::streamoff kTypeAt = 16;
    std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp(kTypeAt).put(ET_EXEC);
    EXPECT_EQ(home.check(path).substr(0, home.check(path).find("note")),
              "error library.not-shared X\n"
              "  ~/libsetup.so is a program, not a shared library.\n"
              "  Give the path of the shared library (.so).\n");
}

TEST(LibraryChecks, VersionsAreInTheOrderOfTheirNumbers) {
    const DoctorHome home;
    for (const char* name : {"libx.so.10", "libx.so.9", "libx.so.9.2", "libx.so", "libx-11.so", "liby.so.1"})
        home.put(name, "");
    std::string names;
    for (const std::string& each : otherVersions("libx.so.1", {home.path()}, {}))
        names += each.substr(home.path().size() + 1) + " ";
    EXPECT_EQ(names, "libx-11.so libx.so libx.so.9 libx.so.9.2 libx.so.10 ");
}

TEST(LibraryChecks, ALibraryForNewerProcessorsIsNotMissing) {
    const DoctorHome home;
    home.take("libjxdoctorbottom.so.1", "glibc-hwcaps/x86-64-v2/libjxdoctorbottom.so.1");
    LoaderPlaces places;
    places.environment = {home.path()};
    EXPECT_EQ(lookUp("libjxdoctorbottom.so.1", nullptr, places).file.path,
              home.file("glibc-hwcaps/x86-64-v2/libjxdoctorbottom.so.1"));
}

TEST(LibraryChecks, TheOtherWordSizeIsTold) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libforeign.so")),
              "error library.wrong-class X\n"
              "  ~/libforeign.so is for 32-bit i386; this program is 64-bit x86-64.\n"
              "  Install the product's library for 64-bit x86-64.\n"
              "note library.loader-says X\n"
              "  The loader says: ~/libforeign.so: wrong ELF class: ELFCLASS32\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, AnotherProcessorIsTold) {
    const DoctorHome home;
    const std::string path = home.take("libsetup.so");
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(18).put('\xB7');
    file.close();
    EXPECT_EQ(home.check(path),
              "error library.wrong-machine X\n"
              "  ~/libsetup.so is for 64-bit AArch64; this program is 64-bit x86-64.\n"
              "  Install the product's library for 64-bit x86-64.\n"
              "note library.loader-says X\n"
              "  The loader says: ~/libsetup.so: cannot open shared object file: No such file or directory\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, AMissingDependencyIsToldWithItsRequesterAndTheVersionThatIsThere) {
    const DoctorHome home;
    const std::string top = home.take("libtop.so");
    home.take("libjxdoctormiddle.so.1");
    for (const char* other : {"libjxdoctorbottom.so.2", "libjxdoctorbottom.so.10", "libjxdoctorbottom11.so"})
        home.take("libjxdoctorbottom.so.1", other);
    EXPECT_EQ(home.check(top),
              "error library.needed-missing X\n"
              "  ~/libjxdoctormiddle.so.1 needs libjxdoctorbottom.so.1 "
              "(libtop.so -> libjxdoctormiddle.so.1 -> libjxdoctorbottom.so.1), which is nowhere where the loader "
              "looks: ~, ~/default. Of other versions the newest here is ~/libjxdoctorbottom.so.10.\n"
              "  Install libjxdoctorbottom.so.1 as well, or a build for the version that is there.\n"
              "note library.loader-says X\n"
              "  The loader says: libjxdoctorbottom.so.1: cannot open shared object file: No such file or directory\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, ADirectlyMissingDependencyWithoutAnyOtherVersionIsTold) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libtop.so")),
              "error library.needed-missing X\n"
              "  ~/libtop.so needs libjxdoctormiddle.so.1, which is nowhere where the loader looks: ~, ~/default.\n"
              "  Install the package that holds libjxdoctormiddle.so.1, or name its directory in LD_LIBRARY_PATH or "
              "the loader's configuration.\n"
              "note library.loader-says X\n"
              "  The loader says: libjxdoctormiddle.so.1: cannot open shared object file: No such file or directory\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, ADependencyThatIsThereForAnotherSystemOnlyIsTold) {
    const DoctorHome home;
    const std::string top = home.take("libtop.so");
    home.take("libforeign.so", "libjxdoctormiddle.so.1");
    const std::string found = home.check(top);
    EXPECT_TRUE(
        found.starts_with("error library.needed-wrong-architecture X\n"
                          "  ~/libtop.so needs libjxdoctormiddle.so.1, which is there for 32-bit i386 only: "
                          "~/libjxdoctormiddle.so.1.\n"
                          "  Install libjxdoctormiddle.so.1 for 64-bit x86-64.\n"
                          "note library.loader-says X\n"))
        << found;
}

TEST(LibraryChecks, ADamagedDependencyIsTold) {
    const DoctorHome home;
    const std::string top = home.take("libtop.so");
    home.put("libjxdoctormiddle.so.1", std::string(100, 'x'));
    EXPECT_EQ(home.check(top),
              "error library.needed-damaged X\n"
              "  ~/libtop.so needs libjxdoctormiddle.so.1, and the loader finds ~/libjxdoctormiddle.so.1, which is not "
              "a shared library.\n"
              "  Install the package that holds libjxdoctormiddle.so.1 again.\n"
              "note library.loader-says X\n"
              "  The loader says: ~/libjxdoctormiddle.so.1: invalid ELF header\n"
              "  Programs show this sentence; the cause is above.\n");
}

TEST(LibraryChecks, ASymbolVersionThatIsNotOfferedIsTold) {
    const DoctorHome home;
    const std::string path = home.take("libwants_second.so");
    home.take("version1/libjxversioned.so.1");
    EXPECT_EQ(
        home.check(path),
        "error library.version-missing X\n"
        "  ~/libwants_second.so needs version JX_2 of libjxversioned.so.1; ~/libjxversioned.so.1 offers JX_1 at most.\n"
        "  Install a newer libjxversioned.so.1, or a build of the library for this system.\n"
        "note library.loader-says X\n"
        "  The loader says: ~/libjxversioned.so.1: version `JX_2' not found (required by "
        "~/libwants_second.so)\n"
        "  Programs show this sentence; the cause is above.\n");
    home.take("version2/libjxversioned.so.1");
    EXPECT_EQ(home.check(path), "");
}

TEST(LibraryChecks, AnUndefinedSymbolIsToldInTheLoadersWords) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libundefined.so")),
              "error library.load-refused X\n"
              "  The loader says: ~/libundefined.so: undefined symbol: jxNobodyHasThis\n"
              "  A library that it needs is of another version or was not linked: ask the library's maker which.\n");
}

TEST(LibraryChecks, ACallOfAnInstallerLibraryThatIsNotAskedForIsTold) {
    const DoctorHome home;
    const std::string told = home.check(home.take("libwants_function.so"));
    EXPECT_NE(told.find("error library.load-refused X\n"
                        "  The loader says: ~/libwants_function.so: undefined symbol: SQLGetPrivateProfileString\n"
                        "  It calls an installer library that it does not ask for: start the program with LD_PRELOAD="),
              std::string::npos)
        << told;
}

TEST(LibraryChecks, ACrashInAConstructorIsToldWithItsSignalAndWhatWasPrinted) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libcrash_at_load.so")),
              "error library.load-crashed X\n"
              "  ~/libcrash_at_load.so crashes while it is loaded, with signal 11 (Segmentation fault). It printed: "
              "about to fail\n"
              "  Its own start-up code fails: look for what it expects around it, or report it to its maker.\n");
}

TEST(LibraryChecks, AnExitInAConstructorIsTold) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libexit_at_load.so")),
              "error library.load-exited X\n"
              "  ~/libexit_at_load.so ends the program while it is loaded, with exit code 3. It printed: No licence\n"
              "  Its own start-up code gives up: look for what it expects around it, such as a licence.\n");
}

TEST(LibraryChecks, AHangInAConstructorIsToldAfterTheLimit) {
    const DoctorHome home;
    LibraryOptions options = home.options();
    options.limit = std::chrono::milliseconds(50);
    EXPECT_EQ(home.dump(checkLibrary("X", home.take("libhang_at_load.so"), LibraryRole::setup, options)),
              "error library.load-timed-out X\n"
              "  ~/libhang_at_load.so was not loaded within 50 ms.\n"
              "  Its own start-up code waits: for a server, a lock or a network file system.\n");
}

TEST(LibraryChecks, ACrashAtTheUnloadIsTold) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libcrash_at_unload.so")),
              "warning library.unload-failed X\n"
              "  ~/libcrash_at_unload.so loads, but unloading it ends the program: signal 11 (Segmentation fault).\n"
              "  Report it to the library's maker; programs that keep it loaded are not affected.\n");
}

TEST(LibraryChecks, AMissingFunctionIsToldAndSoIsAnExchange) {
    const DoctorHome home;
    EXPECT_EQ(home.check(home.take("libdriver.so")),
              "error library.no-entry-point X\n"
              "  ~/libdriver.so has no ConfigDSN or CONFIGDSN, so it is not a setup library of a driver.\n"
              "  It is a driver: were two paths exchanged?\n");
    EXPECT_EQ(home.check(home.take("libsetup.so"), LibraryRole::driver),
              "error library.no-entry-point X\n"
              "  ~/libsetup.so has no SQLAllocHandle or SQLAllocEnv, so it is not a driver.\n"
              "  It is a setup library of a driver: were two paths exchanged?\n");
    EXPECT_EQ(home.check(home.take("libjxdoctorbottom.so.1"), LibraryRole::translator),
              "error library.no-entry-point X\n"
              "  ~/libjxdoctorbottom.so.1 has no SQLDriverToDataSource, so it is not a translator.\n"
              "  Give the library that the product's manual names.\n");
}

TEST(LibraryChecks, ANameWithoutASlashIsLookedForWhereTheLoaderLooks) {
    const DoctorHome home;
    EXPECT_EQ(home.check("libnosuch.so"),
              "error library.missing X\n"
              "  libnosuch.so is in none of the directories where the loader looks: ~/default.\n"
              "  Give the library's full path.\n");
    home.take("libsetup.so", "default/libsetup.so");
    EXPECT_EQ(home.check("libsetup.so"), "");
}

TEST(LibraryChecks, AProgramThatCanBeLoadedAnywhereIsNoLibrary) {
    const DoctorHome home;
    std::filesystem::copy_file("/proc/self/exe", home.file("program"));
    EXPECT_TRUE(home.check(home.file("program"))
                    .starts_with("error library.not-shared X\n"
                                 "  ~/program is a program, not a shared library.\n"));
}

// The loader knows more places than the search through them: what loads has all that it needs.
TEST(LibraryChecks, ALibraryThatLoadsLacksNothing) {
    const DoctorHome home;
    const std::string path = home.take("libwants_installer.so");
    home.take("installer/libodbcinst.so.2", "elsewhere/libodbcinst.so.2");
    EXPECT_NE(home.check(path).find("library.needed-missing"), std::string::npos);
    ::setenv("LD_LIBRARY_PATH", home.file("elsewhere").c_str(), 1);
    const std::string told = home.check(path);
    ::unsetenv("LD_LIBRARY_PATH");
    EXPECT_EQ(told.find("library.needed-missing"), std::string::npos) << told;
    EXPECT_EQ(told.find("library.load-refused"), std::string::npos) << told;
}

TEST(LibraryChecks, TheInstallerLibraryThatAnswersIsNamed) {
    const DoctorHome home;
    const std::string path = home.take("libwants_installer.so");
    home.take("installer/libodbcinst.so.2", "libodbcinst.so.2");
    EXPECT_NE(
        home.check(path).find("note library.installer X\n"
                              "  ~/libwants_installer.so needs libodbcinst.so.2, and ~/libodbcinst.so.2 answers it.\n"
                              "  That library decides which files the driver reads."),
        std::string::npos)
        << home.check(path);
}

TEST(MeantLibrary, IsAPathADriversOrAFileWhereDriversAreInstalled) {
    DoctorHome home;
    home.put(".odbcinst.ini",
             "[ODBC Drivers]\nSmall=Installed\n[Small]\nDriver=/opt/small.so\n[Bare]\nDriver=libbare.so\n");
    home.take("libdriver.so", "default/odbc/libbare.so");
    home.take("libdriver.so", "default/libother.so");
    const model::Configuration configuration = model::Configuration::read();
    const struct {
        std::string value, library;
    } rows[] = {
        {"/opt/any.so", "/opt/any.so"},
        {"lib/any.so", "lib/any.so"},
        {"SMALL", "/opt/small.so"},
        {"bare", home.file("default/odbc/libbare.so")},
        {"libbare.so", home.file("default/odbc/libbare.so")},
        {"libother.so", home.file("default/libother.so")},
        {"libnone.so", "libnone.so"},
        {"", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(meantLibrary(row.value, configuration, home.options().places), row.library);
    }
}

}  // namespace
}  // namespace jx::doctor::test
