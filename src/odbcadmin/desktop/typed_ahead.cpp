// Taking events out of the display's queue and putting them back.
#include "odbcadmin/desktop/typed_ahead.h"

#include <FL/Fl.H>
#include <FL/x.H>

#include <utility>

namespace jx::desktop {

struct TypedAhead::Event {
    XEvent event;
};

TypedAhead::TypedAhead(std::function<bool()> isPending) : isPending_(std::move(isPending)) {
    Fl::add_system_handler(take, this);
}

TypedAhead::~TypedAhead() {
    Fl::remove_system_handler(take);
}

int TypedAhead::take(void* event, void* typedAhead) {
    auto& self = *static_cast<TypedAhead*>(typedAhead);
    const auto& arrived = *static_cast<const XEvent*>(event);
    const bool isUsers = arrived.type == KeyPress || arrived.type == KeyRelease || arrived.type == ButtonPress ||
                         arrived.type == ButtonRelease;
    if (!isUsers || !self.isPending_())
        return 0;
    self.kept_.push_back({arrived});
    return 1;
}

void TypedAhead::handBack() {
    while (!kept_.empty()) {
        XPutBackEvent(fl_display, &kept_.back().event);
        kept_.pop_back();
    }
}

void TypedAhead::drop() {
    kept_.clear();
}

}  // namespace jx::desktop
