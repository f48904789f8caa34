// Answers message boxes as a test says and keeps what they showed.
#pragma once

#include <jxdialog.h>

#include <cstddef>
#include <initializer_list>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace jx::test {

struct ShownBox {
    HWND owner;
    std::string text;
    std::string title;
    unsigned int style;

    friend bool operator==(const ShownBox&, const ShownBox&) = default;
    friend std::ostream& operator<<(std::ostream& out, const ShownBox& box) {
        return out << "{" << box.owner << ", \"" << box.text << "\", \"" << box.title << "\", " << box.style << "}";
    }
};

// MessageBoxScript: the process's message-box handler while it lives. Boxes get the given answers in order, then IDOK.
class MessageBoxScript {
public:
    MessageBoxScript(std::initializer_list<unsigned int> answers = {}) : answers_(answers) {
        JXW_SetMessageBoxHandler(&MessageBoxScript::answer, this);
    }
    ~MessageBoxScript() { JXW_SetMessageBoxHandler(nullptr, nullptr); }
    MessageBoxScript(const MessageBoxScript&) = delete;
    MessageBoxScript& operator=(const MessageBoxScript&) = delete;

    const std::vector<ShownBox>& boxes() const { return boxes_; }

private:
    static unsigned int answer(void* self, HWND owner, const char* text, const char* title, unsigned int style) {
        auto& script = *static_cast<MessageBoxScript*>(self);
        script.boxes_.push_back({owner, text, title, style});
        return script.next_ < script.answers_.size() ? script.answers_[script.next_++] : unsigned{IDOK};
    }

    std::vector<unsigned int> answers_;
    std::size_t next_ = 0;
    std::vector<ShownBox> boxes_;
};

using Boxes = std::vector<ShownBox>;

}  // namespace jx::test
