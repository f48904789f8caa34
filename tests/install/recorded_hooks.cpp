// Replaces the hooks of the file transfer and the dialog starters.
#include "recorded_hooks.h"

#include "install/transfer_hooks.h"

namespace jx::test {

namespace {

RecordedHooks* recorder = nullptr;

void note(std::string call) {
    if (recorder != nullptr)
        recorder->calls.push_back(std::move(call));
}

void noteFile(const char* hook, std::uint32_t item, std::uint32_t entry) {
    note(std::string(hook) + " " + std::to_string(item) + " " + std::to_string(entry));
}

}  // namespace

RecordedHooks::RecordedHooks() {
    recorder = this;
}

RecordedHooks::~RecordedHooks() {
    recorder = nullptr;
}

}  // namespace jx::test

namespace jx::install {

unsigned int VersionCheck(unsigned int /*hwnd*/, _Install* /*install*/, std::uint32_t item, std::uint32_t entry) {
    test::noteFile("VersionCheck", item, entry);
    return 0;
}

unsigned int CopyDisk(unsigned int /*hwnd*/, _Install* /*install*/, std::uint32_t item, std::uint32_t entry) {
    test::noteFile("CopyDisk", item, entry);
    return test::recorder == nullptr ? 0 : test::recorder->copyDiskResult;
}

}  // namespace jx::install

unsigned int Decompress(unsigned int /*hwnd*/, unsigned char* source, unsigned char* target) {
    using jx::test::recorder;
    if (recorder != nullptr) {
        jx::test::note(std::string("Decompress ") + reinterpret_cast<const char*>(source) + " " +
                       reinterpret_cast<const char*>(target));
        recorder->onDecompress();
    }
    return 1;
}

int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    using jx::test::recorder;
    if (recorder != nullptr) {
        jx::test::note("dialog " + std::to_string(templateId));
        recorder->onDialog(owner, procedure, record);
    }
    return 0;
}

int32_t jxDllDialogReturnId(HWND /*owner*/, unsigned short /*templateId*/, JxDialogProcedure /*procedure*/,
                            void* /*record*/) {
    return 0;
}
