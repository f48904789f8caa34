// Message boxes in cells.
#include "odbcadmin/terminal/message.h"

namespace jx::terminal {

namespace {

constexpr int kWidest = 64, kButtonWidth = 10, kButtonGap = 2, kWheelLines = 3;

// On a screen of fewer lines no line above the buttons is free, on one of fewer columns there is no sign.
constexpr int kFewLines = 8, kFewColumns = 30;

}  // namespace

Message::Message(std::string text, std::string title, unsigned int style)
    : text_(std::move(text)),
      title_(std::move(title)),
      style_(assist::boxStyle(style, text_)),
      places_(style_.buttons.size()),
      focus_(style_.first) {}

void Message::layOut(const Rect& area, Charset charset) {
    hasSign_ = *style_.sign != '\0' && area.columns >= kFewColumns;
    const int signColumns = hasSign_ ? 4 : 0;
    const int buttonLines = area.lines < kFewLines ? 1 : 2;
    const int widest = std::max(8, std::min(kWidest, area.columns - 4));
    lines_ = wrapped(text_, widest - signColumns, charset);
    int columns = std::max(columnsOf(title_, charset) + 2, buttonColumns(kButtonWidth, kButtonGap) + kButtonGap);
    for (const std::string& line : lines_)
        columns = std::max(columns, columnsOf(line, charset) + signColumns);
    frame_.columns = std::min(std::min(columns, widest) + 4, area.columns);
    frame_.lines = std::min(static_cast<int>(lines_.size()) + buttonLines + 2, area.lines);
    frame_.column = area.column + (area.columns - frame_.columns) / 2;
    frame_.line = area.line + (area.lines - frame_.lines) / 2;
    inside_ = {frame_.column + 2 + signColumns, frame_.line + 1, std::max(0, frame_.columns - 4 - signColumns),
               std::max(0, frame_.lines - 2 - buttonLines)};
    scroll(0);
}

void Message::scroll(int lines) {
    firstLine_ = std::clamp(firstLine_ + lines, 0, std::max(0, static_cast<int>(lines_.size()) - inside_.lines));
}

int Message::buttonColumns(int width, int gap) const {
    return static_cast<int>(places_.size()) * (width + gap) - gap;
}

// Where the usual width has no room, each button is as wide as the longest text needs.
void Message::paintButtons(Canvas& canvas) {
    int width = kButtonWidth;
    int gap = kButtonGap;
    if (buttonColumns(width, gap) > frame_.columns - 2) {
        gap = 1;
        width = 0;
        for (const assist::BoxButton& button : style_.buttons)
            width = std::max(width, static_cast<int>(std::string_view(button.text + 1).size()) + 2);
    }
    int column = frame_.column + std::max(1, (frame_.columns - buttonColumns(width, gap)) / 2);
    for (std::size_t i = 0; i < places_.size(); ++i) {
        Rect& place = places_[i];
        place = {column, frame_.bottom() - 2, width, 1};
        const Look look = i == focus_ ? Look::focus : Look::plain;
        canvas.fill(place, look);
        canvas.put({column, place.line}, i == focus_ ? "<" : "[", look);
        canvas.put({place.right() - 1, place.line}, i == focus_ ? ">" : "]", look);
        const std::string_view text = style_.buttons[i].text + 1;
        const int begin = column + (width - static_cast<int>(text.size())) / 2;
        canvas.put({begin, place.line}, text.substr(0, 1), i == focus_ ? look : Look::key);
        canvas.put({begin + 1, place.line}, text.substr(1), look);
        column += width + gap;
    }
}

void Message::paint(Canvas& canvas, const Rect& area) {
    layOut(area, canvas.charset());
    canvas.clip(area);
    canvas.fill(frame_);
    drawFrame(canvas, frame_, Look::plain);
    if (!title_.empty())
        canvas.put({frame_.column + 2, frame_.line}, " " + cutTo(title_, frame_.columns - 6, canvas.charset()) + " ",
                   Look::title);
    if (hasSign_)
        canvas.put({frame_.column + 2, frame_.line + 1}, std::string("(") + style_.sign + ")", Look::alarm);
    const Lines& marks = linesOf(canvas.charset());
    if (firstLine_ > 0)
        canvas.put({frame_.right() - 1, inside_.line}, marks.up);
    if (firstLine_ + inside_.lines < static_cast<int>(lines_.size()))
        canvas.put({frame_.right() - 1, inside_.bottom() - 1}, marks.down);
    canvas.clip(common(area, {frame_.column, frame_.line, frame_.columns - 1, frame_.lines}));
    for (int line = 0; line < inside_.lines && firstLine_ + line < static_cast<int>(lines_.size()); ++line)
        canvas.put({inside_.column, inside_.line + line},
                   lines_[static_cast<std::size_t>(firstLine_) + static_cast<std::size_t>(line)]);
    paintButtons(canvas);
    canvas.clip(canvas.whole());
}

// On its right edge the box is scrolled.
std::optional<unsigned int> Message::press(Point place) {
    if (frame_.contains(place) && place.column == frame_.right() - 1)
        scroll(place.line < frame_.line + frame_.lines / 2 ? -page() : page());
    for (std::size_t i = 0; i < places_.size(); ++i)
        if (places_[i].contains(place))
            return style_.buttons[i].answer;
    return std::nullopt;
}

std::optional<unsigned int> Message::typed(const Input& input) const {
    if (input.text == " ")
        return style_.buttons[focus_].answer;
    for (const assist::BoxButton& button : style_.buttons) {
        const int letter = button.text[1] | 0x20;
        if (input.text.size() == 1 && (input.text[0] | 0x20) == letter)
            return button.answer;
    }
    return std::nullopt;
}

std::optional<unsigned int> Message::take(const Input& input) {
    const std::size_t count = places_.size();
    switch (input.key) {
        case Key::enter:
            return style_.buttons[focus_].answer;
        case Key::escape:
            return leastAnswer();
        case Key::character:
            return typed(input);
        case Key::press:
        case Key::doublePress:
            return press(input.place);
        case Key::tab:
        case Key::right:
            focus_ = (focus_ + 1) % count;
            break;
        case Key::backTab:
        case Key::left:
            focus_ = (focus_ + count - 1) % count;
            break;
        case Key::up:
            scroll(-1);
            break;
        case Key::down:
            scroll(1);
            break;
        case Key::wheelUp:
            scroll(-kWheelLines);
            break;
        case Key::wheelDown:
            scroll(kWheelLines);
            break;
        case Key::pageUp:
            scroll(-page());
            break;
        case Key::pageDown:
            scroll(page());
            break;
        case Key::home:
            scroll(-firstLine_);
            break;
        case Key::end:
            scroll(static_cast<int>(lines_.size()));
            break;
        default:
            break;
    }
    return std::nullopt;
}

}  // namespace jx::terminal
