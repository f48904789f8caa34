// Keys and presses that come faster than they are carried out.
#pragma once

#include <functional>
#include <vector>

namespace jx::desktop {

// TypedAhead: keeps the user's events back while something he did before is still to be carried out, for that may move
// the focus or open a window which the next key is meant for. The toolkit would hand out all that has arrived at once.
// One at a time in a process; open the display first.
class TypedAhead {
public:
    // isPending says whether there is something to be carried out.
    explicit TypedAhead(std::function<bool()> isPending);
    ~TypedAhead();
    TypedAhead(const TypedAhead&) = delete;
    TypedAhead& operator=(const TypedAhead&) = delete;

    // Lets the toolkit have what was kept, before everything that arrives from now on.
    void handBack();

    // Forgets what was kept.
    void drop();

private:
    struct Event;
    static int take(void* event, void* typedAhead);

    std::function<bool()> isPending_;
    std::vector<Event> kept_;
};

}  // namespace jx::desktop
