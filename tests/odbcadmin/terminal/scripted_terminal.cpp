// Steps and pictures.
#include "scripted_terminal.h"
#include "rules/utf8.h"

namespace jx::test {

Step press(Key key) {
    Step step;
    step.input.key = key;
    return step;
}

Step type(const std::string& character) {
    Step step = press(Key::character);
    step.input.text = character;
    return step;
}

Step alt(const std::string& character) {
    Step step = type(character);
    step.input.alt = true;
    return step;
}

Step click(int column, int line) {
    Step step = press(Key::press);
    step.input.place = {column, line};
    return step;
}

Step doubleClick(int column, int line) {
    Step step = click(column, line);
    step.input.key = Key::doublePress;
    return step;
}

Step wheel(Key direction, int column, int line) {
    Step step = click(column, line);
    step.input.key = direction;
    return step;
}

Step perform(std::function<void()> work) {
    Step step;
    step.work = std::move(work);
    return step;
}

Step meanwhile(Step step) {
    step.isMeanwhile = true;
    return step;
}

std::vector<Step> typed(const std::string& text) {
    std::vector<Step> steps;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = rules::characterAt(text, at).length;
        steps.push_back(type(text.substr(at, length)));
        at += length;
    }
    return steps;
}

std::string manySources(int count) {
    std::string text = "[ODBC Data Sources]\n";
    for (int i = 0; i < count; ++i)
        text += "S" + std::to_string(100 + i) + "=Sample\n";
    return text;
}

void ScriptedTerminal::look() {
    then(perform([this] { seen_.push_back(shown_); }));
}

void ScriptedTerminal::show(const terminal::Canvas& canvas, std::optional<Point> cursor) {
    canvas_ = canvas;
    cursor_ = cursor;
    shown_ = canvas.text();
    pictures_.push_back(shown_);
}

std::string ScriptedTerminal::focusedRow() const {
    constexpr int kFirstColumn = 8;
    constexpr int kLastColumn = 50;
    std::string row;
    for (int line = 0; line < lines_; ++line)
        for (int column = kFirstColumn; column < kLastColumn; ++column)
            if (canvas_.at({column, line}).look == terminal::Look::focus)
                row += canvas_.at({column, line}).text;
    return row.substr(0, row.find_last_not_of(' ') + 1);
}

void ScriptedTerminal::afterWork() {
    while (!steps_.empty() && steps_.front().isMeanwhile)
        steps_.pop_front();
}

Input ScriptedTerminal::next() {
    while (!steps_.empty()) {
        const Step step = steps_.front();
        steps_.pop_front();
        if (!step.work) {
            Input input = step.input;
            input.time = time_ += 10;
            return input;
        }
        step.work();
    }
    Input gone;
    gone.key = Key::gone;
    return gone;
}

}  // namespace jx::test
