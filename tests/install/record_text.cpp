// Records of an installation for tests: made from texts, and written out as text.
#include "record_text.h"

#include <gtest/gtest.h>
#include <jxmemory.h>
#include <sys/stat.h>

#include "config/text_bytes.h"

namespace jx::test {

using install::InfEntry;
using install::InstallItem;
using install::kCapabilityKeys;

TestRecord::TestRecord(const char* infFile) {
    if (install::InstallInit(0, install_, nullptr, nullptr) != 0)
        ADD_FAILURE() << "no record";
    install_->infFile = ownedText(infFile);
}

TestRecord::~TestRecord() {
    install::InstallTerm(install_);
    ramFree(install_);
}

TestRecord& TestRecord::item(install::ItemKind kind, std::string_view name) {
    EXPECT_EQ(install::appendItem(install_, name, kind), 0U);
    install_->items[install_->itemCount - 1].selected = 1;
    return *this;
}

TestRecord& TestRecord::file(const char* role, const char* fileName) {
    InstallItem& last = install_->items[install_->itemCount - 1];
    last.entries = static_cast<InfEntry*>(ramResize(last.entries, (last.entryCount + 1) * sizeof(InfEntry)));
    last.entries[last.entryCount] = InfEntry{};
    last.entries[last.entryCount].key = ownedText(role);
    last.entries[last.entryCount].fileName = ownedText(fileName);
    ++last.entryCount;
    return *this;
}

TestRecord& TestRecord::capability(std::string_view key, const char* value) {
    for (std::size_t position = 0; position < kCapabilityKeys.size(); ++position) {
        if (kCapabilityKeys[position] == key)
            install_->items[install_->itemCount - 1].driverKeys[position] = ownedText(value);
    }
    return *this;
}

TestRecord& TestRecord::directories(const char* sourceDir, const char* targetDir) {
    install_->sourceDir = ownedText(sourceDir);
    install_->targetDir = ownedText(targetDir);
    return *this;
}

ScriptRecord::ScriptRecord(const std::string& text) : home{{"odbc.inf", text}}, record(home.file("odbc.inf").c_str()) {}

std::vector<std::string> unusableScripts(const TestHome& home) {
    EXPECT_EQ(mkdir(home.file("folder").c_str(), 0700), 0);
    EXPECT_EQ(mkfifo(home.file("fifo").c_str(), 0600), 0);
    return {home.file("folder"), home.file("fifo"), home.file("absent"), ""};
}

unsigned char* ownedText(const char* text) {
    return ramAllocStr(asBytes(text));
}

std::string quoted(const unsigned char* text) {
    return text == nullptr ? "-" : "\"" + std::string(asChars(text)) + "\"";
}

namespace {

const char* kindName(std::uint32_t kind) {
    constexpr const char* kNames[] = {"driver", "core", "translator"};
    return kind < std::size(kNames) ? kNames[kind] : "other";
}

std::string dumpEntry(const InfEntry& entry) {
    std::string text = "  file " + quoted(entry.key) + " " + quoted(entry.fileName);
    for (const long number : {entry.number0, entry.dateYear, entry.dateMonth, entry.dateDay, entry.number15})
        text += " " + std::to_string(number);
    text += " version";
    for (const long number : entry.version)
        text += " " + std::to_string(number);
    return text + " texts " + quoted(entry.text8) + " " + quoted(entry.text14) + "\n";
}

std::string dumpHead(const InstallItem& item) {
    return std::string(kindName(item.kind)) + " " + quoted(item.name);
}

}  // namespace

std::string dump(const install::_Install& install) {
    std::string text;
    for (const InstallItem& item : itemsOf(install)) {
        text += dumpHead(item) + (item.selected != 0 ? " selected\n" : "\n");
        for (std::size_t position = 0; position < kCapabilityKeys.size(); ++position) {
            if (item.driverKeys[position] != nullptr)
                text += std::string("  ") + kCapabilityKeys[position] + "=" + asChars(item.driverKeys[position]) + "\n";
        }
        for (const InfEntry& entry : entriesOf(item))
            text += dumpEntry(entry);
    }
    return text;
}

std::string dumpNames(const install::_Install& install) {
    std::string text;
    for (const InstallItem& item : itemsOf(install))
        text += dumpHead(item) + "\n";
    return text;
}

std::string dumpProcessed(const install::_Install& install) {
    std::string text;
    for (const unsigned char* file : std::span(install.processedFiles, install.processedCount))
        text += quoted(file);
    return text;
}

std::string scriptLine(std::string_view fileName) {
    return "1," + std::string(fileName) + ",,,,2024-03-15,,,NEWER,,,,,,shared,48211,,,,02.50.00.1234,";
}

}  // namespace jx::test
