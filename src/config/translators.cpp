// Choosing a translator and calling its setup routine.
#include "config/translators.h"

#include <jxfiles.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstring>

#include <control_ids.h>
#include <text_ids.h>
#include "config/configuration_file.h"
#include "config/message_box.h"
#include "config/setup_library.h"
#include "config/sized_output.h"
#include "config/text_bytes.h"
#include "rules/sections.h"

using jx::asBytes;

namespace {

constexpr int kSetupPathSize = 255;

}  // namespace

int OdbcIns::jxConfigTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned char* lpszPath, DWORD* pvOption) {
    // With a null name the read would give the list of all sections.
    if (lpszName == nullptr || lpszPath == nullptr)
        return 0;
    std::memset(lpszPath, 0, kSetupPathSize);
    jx::driverFile().read(lpszName, asBytes(jx::rules::kSetup), lpszPath, kSetupPathSize);
    // Deliberate: the library stays loaded, since what it returned to the caller may be its own code or data.
    hSetupLib = bosLoadLibrary(lpszPath, 0);
    if (hSetupLib == nullptr) {
        jx::showText(hwnd, JxTextTranslatorNotLoaded, lpszPath, JxTextTranslatorTitle, MB_OK);
        return 0;
    }
    pfnConfigTranslator = jx::findRoutine<ConfigTranslatorRoutine>(hSetupLib, "CONFIGTRANSLATOR", "ConfigTranslator");
    if (pfnConfigTranslator == nullptr) {
        jx::showText(hwnd, JxTextTranslatorNoRoutine, lpszPath, JxTextTranslatorTitle, MB_OK);
        return 0;
    }
    return pfnConfigTranslator(hwnd, pvOption);
}

int OdbcIns::jxSQLGetTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned short cbNameMax,
                                unsigned short* pcbNameOut, unsigned char* lpszPath, unsigned short cbPathMax,
                                unsigned short* pcbPathOut, DWORD* pvOption) {
    // A name that is too long is refused: cut, it could be another translator's.
    if (hwnd == 0 || BUTSTLEN(lpszName) >= jx::kTranslatorNameSize)
        return FALSE;
    unsigned char name[jx::kTranslatorNameSize + 1] = {};
    unsigned char path[256] = {};
    if (lpszName != nullptr)
        BUTSTCPY(name, lpszName);
    jx::TranslatorChoice choice{name, this, 0};
    jxDllDialog(hwnd, JxSelectTranslatorDialog, SelectTranslatorDlgProc, &choice);
    if (BUTSTCMP(name, asBytes(jx::kNoTranslator)) == 0) {
        jx::storeLength(pcbNameOut, 0);
        jx::storeLength(pcbPathOut, 0);
        return TRUE;
    }
    // Deliberate: TRUE, without a name and path, also when the setup routine failed, was cancelled or returned anything
    // but 1.
    if (jxConfigTranslator(hwnd, name, path, pvOption) != 1)
        return TRUE;
    jx::handOutText(name, lpszName, cbNameMax, pcbNameOut);
    jx::handOutText(path, lpszPath, cbPathMax, pcbPathOut);
    return TRUE;
}
