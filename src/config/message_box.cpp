// The message boxes whose texts are resources of the library.
#include "config/message_box.h"

#include <jxerrors.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstdint>
#include <cstdio>

#include <text_ids.h>

namespace jx {

unsigned int showText(HWND owner, unsigned short textId, const unsigned char* name, unsigned short titleId,
                      unsigned int style) {
    unsigned char title[256] = {};
    unsigned char pattern[256] = {};
    winGetString(title, titleId);
    winGetString(pattern, textId);
    JxParamString text;
    text.initialize(pattern);
    text.setParam(name);
    return guiMessageBox(owner, text.text(), title, style);
}

}  // namespace jx

int OdbcIns::DisplayMB(unsigned int hwnd, unsigned long messageId) {
    if (messageId < JxTextRemoveFailed || messageId > JxTextSetupNotLoaded)
        return 0;
    unsigned char pattern[255] = {};
    JXW_LoadString(BJXHINST, static_cast<unsigned short>(messageId), pattern, sizeof pattern);
    if (messageId != JxTextConfirmRemove)
        return static_cast<std::uint16_t>(jx::showMessage(hwnd, pattern, MB_OK | MB_ICONEXCLAMATION));
    char question[255] = {};
    std::snprintf(question, sizeof question, jx::asChars(pattern), dataSourceName);
    return static_cast<std::uint16_t>(jx::showMessage(hwnd, jx::asBytes(question), MB_YESNO | MB_ICONQUESTION));
}
