// The exported calls that read and write one key.
#include <new>

#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/arguments.h"
#include "api3/call.h"
#include "api3/profile_string.h"
#include "api3/profile_write.h"

using namespace jx::api3;

namespace {

std::size_t sizeOf(int size) {
    return size < 0 ? 0 : static_cast<std::size_t>(size);
}

// Runs look, or gives the default where it cannot.
template <class Look>
int answerLookUp(const LookUpCall& call, const TextOutput& output, Look look) {
    ThreadState* state = beginCall();
    const int failed = -1;
    const int held = state == nullptr ? failed : guarded(failed, [&] { return look(*state); });
    return held == failed ? giveDefault(call, output) : held;
}

}  // namespace

int SQLGetPrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault, LPSTR lpszRetBuffer,
                               int cbRetBuffer, LPCSTR lpszFilename) {
    const LookUpCall call{lpszFilename, {lpszSection, lpszEntry}, {lpszDefault, nullptr}};
    const TextOutput output(lpszRetBuffer, sizeOf(cbRetBuffer));
    return answerLookUp(call, output, [&](ThreadState& state) { return giveProfileString(state, call, output); });
}

JX_ALSO_WITH_A(SQLGetPrivateProfileString);

int SQLGetPrivateProfileStringW(const SQLWCHAR* lpszSection, const SQLWCHAR* lpszEntry, const SQLWCHAR* lpszDefault,
                                SQLWCHAR* lpszRetBuffer, int cchRetBuffer, const SQLWCHAR* lpszFilename) {
    // Whether it asks for a list shows before the texts are converted.
    const LookUpCall call{
        nullptr, {lpszSection == nullptr ? nullptr : "", lpszEntry == nullptr ? nullptr : ""}, {nullptr, lpszDefault}};
    const TextOutput output(lpszRetBuffer, sizeOf(cchRetBuffer));
    return answerLookUp(call, output, [&](ThreadState& state) {
        const WideTexts texts{lpszSection, lpszEntry, lpszFilename};
        if (!texts.areWhole())
            return giveDefault(call, output);
        return giveProfileString(state, {texts[2], {texts[0], texts[1]}, call.fallback}, output);
    });
}

BOOL SQLWritePrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszString, LPCSTR lpszFilename) {
    return answerCall([&](ThreadState& state) {
        return areUtf8({lpszSection, lpszEntry, lpszString, lpszFilename}) &&
               writeProfile(state, {lpszSection, lpszEntry, lpszString}, lpszFilename);
    });
}

JX_ALSO_WITH_A(SQLWritePrivateProfileString);

BOOL SQLWritePrivateProfileStringW(const SQLWCHAR* lpszSection, const SQLWCHAR* lpszEntry, const SQLWCHAR* lpszString,
                                   const SQLWCHAR* lpszFilename) {
    return answerCall([&](ThreadState& state) {
        const WideTexts texts{lpszSection, lpszEntry, lpszString, lpszFilename};
        return texts.areWhole() && writeProfile(state, {texts[0], texts[1], texts[2]}, texts[3]);
    });
}
