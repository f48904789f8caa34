// Choosing a translator and calling its setup routine.
#include <jxdialog.h>
#include <jxerrors.h>
#include <jxfiles.h>
#include <jxprofile.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <cstring>

#include "config/setup_library.h"
#include "config/sized_output.h"
#include "config/text_bytes.h"
#include "config/translator_choice.h"

using jx::asBytes;

namespace {

constexpr unsigned short kSelectTranslatorTemplate = 143;
constexpr unsigned short kCannotLoadText = 56;
constexpr unsigned short kNoEntryPointText = 57;
constexpr unsigned short kFailureTitle = 58;
constexpr std::size_t kSetupPathSize = 255;

// Tells that something is wrong with the setup library at path.
void showFailure(HWND hwnd, unsigned short textId, const unsigned char* path) {
    unsigned char title[256] = {};
    unsigned char pattern[256] = {};
    winGetString(title, kFailureTitle);
    winGetString(pattern, textId);
    JxParamString message;
    message.initialize(pattern);
    message.setParam(path);
    guiMessageBox(hwnd, message.text(), title, MB_OK);
}

}  // namespace

int OdbcIns::jxConfigTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned char* lpszPath, DWORD* pvOption) {
    // A null name would read the list of all sections as the path.
    if (lpszName == nullptr || lpszPath == nullptr)
        return 0;
    std::memset(lpszPath, 0, kSetupPathSize);
    jxGetPrivateProfileString(lpszName, asBytes("Setup"), asBytes(""), lpszPath, kSetupPathSize,
                              asBytes(INS_ODBCINST_FILENAME));
    // Deliberate: the library stays loaded: what it gave the caller may be code or data of its own.
    hSetupLib = bosLoadLibrary(lpszPath, 0);
    if (hSetupLib == nullptr) {
        showFailure(hwnd, kCannotLoadText, lpszPath);
        return 0;
    }
    pfnConfigTranslator = jx::findRoutine<ConfigTranslatorRoutine>(hSetupLib, "CONFIGTRANSLATOR", "ConfigTranslator");
    if (pfnConfigTranslator == nullptr) {
        showFailure(hwnd, kNoEntryPointText, lpszPath);
        return 0;
    }
    return pfnConfigTranslator(hwnd, pvOption);
}

int OdbcIns::jxSQLGetTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned short cbNameMax,
                                unsigned short* pcbNameOut, unsigned char* lpszPath, unsigned short cbPathMax,
                                unsigned short* pcbPathOut, DWORD* pvOption) {
    // A name that is cut would be another translator's.
    if (hwnd == 0 || BUTSTLEN(lpszName) >= jx::kTranslatorNameSize)
        return FALSE;
    unsigned char name[jx::kTranslatorNameSize + 1] = {};
    unsigned char path[256] = {};
    if (lpszName != nullptr)
        BUTSTCPY(name, lpszName);
    jx::TranslatorChoice choice{name, this, 0};
    jxDllDialog(hwnd, kSelectTranslatorTemplate, SelectTranslatorDlgProc, &choice);
    if (BUTSTCMP(name, asBytes(jx::kNoTranslator)) == 0) {
        jx::storeLength(pcbNameOut, 0);
        jx::storeLength(pcbPathOut, 0);
        return TRUE;
    }
    // Deliberate: a setup routine that failed, was cancelled or answered anything but 1 still gives TRUE, without a
    // name or path.
    if (jxConfigTranslator(hwnd, name, path, pvOption) != 1)
        return TRUE;
    jx::handOutText(name, lpszName, cbNameMax, pcbNameOut);
    jx::handOutText(path, lpszPath, cbPathMax, pcbPathOut);
    return TRUE;
}
