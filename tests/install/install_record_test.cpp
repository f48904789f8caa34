// The record of an installation: making it, adding components, releasing it.
#include "install/install_record.h"

#include <gtest/gtest.h>
#include <jxmemory.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "config/text_bytes.h"
#include "record_text.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using jx::asBytes;

// Whether every byte of the record is zero.
bool isBlank(const _Install& install) {
    const std::string bytes(reinterpret_cast<const char*>(&install), sizeof install);
    return bytes == std::string(sizeof install, '\0');
}

TEST(InstallRecord, BeginsEmptyAndTakesOverNoPath) {
    _Install* install = nullptr;
    ASSERT_EQ(InstallInit(7, install, asBytes("/cdrom/odbc.inf"), asBytes("/cdrom")), 0U);
    ASSERT_NE(install, nullptr);
    EXPECT_TRUE(isBlank(*install));
    InstallTerm(install);
    ramFree(install);
}

TEST(InstallRecord, GrowsByOneZeroFilledComponentAtATime) {
    TestRecord record;
    for (std::uint32_t number = 0; number < 100; ++number) {
        ASSERT_EQ(appendItem(record.get(), "Item " + std::to_string(number), CoreItem), 0U);
        ASSERT_EQ(record->itemCount, number + 1);
        const InstallItem& item = record->items[number];
        EXPECT_EQ(quoted(item.name), "\"Item " + std::to_string(number) + "\"");
        EXPECT_EQ(item.kind, CoreItem);
        EXPECT_EQ(item.selected, 0U);
        EXPECT_EQ(item.entryCount, 0U);
        EXPECT_EQ(item.entries, nullptr);
        for (const unsigned char* key : item.driverKeys)
            EXPECT_EQ(key, nullptr);
    }
    EXPECT_EQ(quoted(record->items[0].name), "\"Item 0\"");
}

TEST(InstallRecord, TakesANameTwice) {
    TestRecord record;
    ASSERT_EQ(appendItem(record.get(), "A", DriverItem), 0U);
    ASSERT_EQ(appendItem(record.get(), "A", DriverItem), 0U);
    EXPECT_EQ(dumpNames(*record.get()), "driver \"A\"\ndriver \"A\"\n");
}

TEST(InstallRecord, IsEmptyAfterItsEndButForTheOutcome) {
    TestRecord record("/s.inf");
    record.item(DriverItem, "A").capability("SQLLevel", "1").file("Driver", "a.so").file("Setup", nullptr);
    record.item(TranslatorItem, "B").directories("/cdrom", "/cdrom/");
    record->auxString1 = ownedText("1");
    record->auxString2 = ownedText("2");
    record->items[0].entries[0].text8 = ownedText("OLDER");
    record->items[0].entries[0].text14 = ownedText("shared");
    record->processedFiles = static_cast<unsigned char**>(ramAllocZ(sizeof(unsigned char*)));
    record->processedFiles[0] = ownedText("a.so");
    record->processedCount = 1;
    record->anyFileInstalled = 1;
    InstallTerm(record.get());
    EXPECT_EQ(record->anyFileInstalled, 1U);
    record->anyFileInstalled = 0;
    EXPECT_TRUE(isBlank(*record.get()));
    InstallTerm(record.get());
    EXPECT_TRUE(isBlank(*record.get())) << "ending twice releases nothing twice";
}

TEST(InstallRecord, CanBeEndedHalfFilledOrNotAtAll) {
    TestRecord record;
    record.item(DriverItem, "A");
    ramFree(record->items[0].name);
    record->items[0].name = nullptr;
    InstallTerm(record.get());
    InstallTerm(nullptr);
    EXPECT_TRUE(isBlank(*record.get()));
}

TEST(InstallRecord, ReleasesTheFilesOfAComponent) {
    TestRecord record;
    record.item(DriverItem, "A").file("Driver", "a.so");
    releaseEntries(record->items[0]);
    EXPECT_EQ(record->items[0].entryCount, 0U);
    EXPECT_EQ(record->items[0].entries, nullptr);
    releaseEntries(record->items[0]);
    EXPECT_EQ(dump(*record.get()), "driver \"A\" selected\n");
}

TEST(InstallRecord, HasNothingToDoForATemporaryDirectory) {
    TestRecord record;
    EXPECT_EQ(DoTheTempDirectoryThing(7, record.get(), nullptr, TempDirectoryRemove), 0U);
    EXPECT_EQ(DoTheTempDirectoryThing(0, nullptr, nullptr, TempDirectoryRemove), 0U);
    EXPECT_TRUE(isBlank(*record.get()));
}

// In 32 bits every field takes 4 bytes.
constexpr std::size_t kWord = sizeof(void*);

TEST(InstallRecord, HasItsFieldsInOrder) {
    const std::size_t offsets[] = {
        offsetof(_Install, itemCount),      offsetof(_Install, items),          offsetof(_Install, anyFileInstalled),
        offsetof(_Install, reserved0),      offsetof(_Install, reserved1),      offsetof(_Install, reserved2),
        offsetof(_Install, processedCount), offsetof(_Install, processedFiles), offsetof(_Install, reserved3),
        offsetof(_Install, auxString1),     offsetof(_Install, infFile),        offsetof(_Install, auxString2),
        offsetof(_Install, targetDir),      offsetof(_Install, sourceDir),      sizeof(_Install)};
    constexpr std::size_t kIn64Bits[] = {0, 8, 16, 20, 24, 28, 32, 40, 48, 56, 64, 72, 80, 88, 96};
    for (std::size_t field = 0; field < std::size(offsets); ++field)
        EXPECT_EQ(offsets[field], kWord == 4 ? 4 * field : kIn64Bits[field]) << field;
}

TEST(InstallItem, HasItsFieldsInOrder) {
    const std::size_t offsets[] = {offsetof(InstallItem, name),
                                   offsetof(InstallItem, kind),
                                   offsetof(InstallItem, selected),
                                   offsetof(InstallItem, driverKeys),
                                   offsetof(InstallItem, entryCount),
                                   offsetof(InstallItem, entries),
                                   sizeof(InstallItem)};
    constexpr std::size_t kIn32Bits[] = {0, 4, 8, 12, 40, 44, 48};
    constexpr std::size_t kIn64Bits[] = {0, 8, 12, 16, 72, 80, 88};
    for (std::size_t field = 0; field < std::size(offsets); ++field)
        EXPECT_EQ(offsets[field], kWord == 4 ? kIn32Bits[field] : kIn64Bits[field]) << field;
}

TEST(InfEntry, HasItsFieldsInOrderOneWordEach) {
    const std::size_t offsets[] = {offsetof(InfEntry, key),       offsetof(InfEntry, number0),
                                   offsetof(InfEntry, fileName),  offsetof(InfEntry, dateYear),
                                   offsetof(InfEntry, dateMonth), offsetof(InfEntry, dateDay),
                                   offsetof(InfEntry, text8),     offsetof(InfEntry, text14),
                                   offsetof(InfEntry, number15),  offsetof(InfEntry, version)};
    for (std::size_t field = 0; field < std::size(offsets); ++field)
        EXPECT_EQ(offsets[field], kWord * field) << field;
    EXPECT_EQ(sizeof(InfEntry), 13 * kWord);
}

TEST(InstallDriversRecord, IsTheOutcomeFollowedByTheRecord) {
    EXPECT_EQ(offsetof(InstallDriversRecord, proceed), 0U);
    EXPECT_EQ(offsetof(InstallDriversRecord, install), kWord);
}

}  // namespace
