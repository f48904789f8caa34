// The message boxes of the library.
//
//     showMessage(owner, MessageText("DSN - ", name, " does not exist").text(), MB_OK);
#pragma once

#include <jxdialog.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "config/text_bytes.h"

namespace jx {

// The title of the installer's own message boxes.
inline constexpr char kMessageTitle[] = "KALDERO ODBC Admin";

// MessageText: a sentence with a name in it, in 1024 bytes. If it is too long the name is cut, not the sentence.
class MessageText {
public:
    MessageText(std::string_view before, std::string_view name, std::string_view after) {
        const std::size_t room = kSize - 1 - std::min(kSize - 1, before.size() + after.size());
        append(before);
        append(name.substr(0, room));
        append(after);
    }

    const unsigned char* text() const { return text_; }

private:
    static constexpr std::size_t kSize = 1024;

    void append(std::string_view part) {
        const std::size_t copied = std::min(part.size(), kSize - 1 - length_);
        std::memcpy(text_ + length_, part.data(), copied);
        length_ += copied;
    }

    unsigned char text_[kSize]{};
    std::size_t length_ = 0;
};

// Shows a message under the installer's title; returns the button chosen.
inline unsigned int showMessage(HWND owner, const unsigned char* text, unsigned int style) {
    return guiMessageBox(owner, text, asBytes(kMessageTitle), style);
}

// Shows the library's text textId, with name in the place of "%1", under the title titleId; returns the button chosen.
// When memory is short the text is empty.
unsigned int showText(HWND owner, unsigned short textId, const unsigned char* name, unsigned short titleId,
                      unsigned int style);

}  // namespace jx
