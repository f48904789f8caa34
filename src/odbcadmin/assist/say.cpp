// Message boxes through the dialog layer.
#include "odbcadmin/assist/say.h"

#include <utility>

namespace jx::assist {

namespace {

thread_local std::string asked;

const unsigned char* bytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
}

}  // namespace

unsigned int say(HWND owner, const std::string& text, const std::string& title, unsigned int style) {
    return guiMessageBox(owner, bytesOf(text), bytesOf(title), style);
}

bool asksToGoOn(HWND owner, const std::string& text, const std::string& title) {
    struct Leave {
        std::string outer;
        ~Leave() { asked = std::move(outer); }
    };
    const Leave leave{std::exchange(asked, text)};
    return say(owner, text, title, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

bool asksToDestroy(HWND owner, const std::string& text, const std::string& title) {
    return say(owner, text, title, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

std::string sentenceOf(const model::Reason& reason) {
    return reason.fact + "." + (reason.advice.empty() ? "" : " " + reason.advice);
}

std::string sentenceOf(const model::Reason& reason, const std::vector<model::RepeatedCommand>& commands) {
    const std::string advice = model::adviceOn(reason, commands);
    return reason.fact + "." + (advice.empty() ? "" : (advice == reason.advice ? " " : "\n\n") + advice);
}

const std::string& questionToGoOn() {
    return asked;
}

}  // namespace jx::assist
