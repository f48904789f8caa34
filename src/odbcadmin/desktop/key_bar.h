// The keys that do something in a dialog, as buttons below it.
#pragma once

#include <FL/Fl_Group.H>

#include <functional>
#include <string>
#include <vector>

namespace jx::desktop {

struct KeyOffer {
    std::string key;  // "F1"
    std::string label;
    bool operator==(const KeyOffer&) const = default;
};

// KeyBar: a button for each key. They never take the focus: what has it goes on having it. They stand in as many lines
// as the width demands.
class KeyBar : public Fl_Group {
public:
    // pressed is called with the number of the offer.
    explicit KeyBar(std::function<void(std::size_t)> pressed);

    // Shows these offers. True when they are not those of before: the bar may need another height.
    bool offer(const std::vector<KeyOffer>& offers);

    int heightFor(int width) const;
    void resize(int x, int y, int width, int height) override;

private:
    // Calls visit(number of the button, its left, its line) for each; returns the number of lines.
    int flow(int width, const std::function<void(int, int, int)>& visit) const;

    std::function<void(std::size_t)> pressed_;
    std::vector<KeyOffer> offers_;
};

}  // namespace jx::desktop
