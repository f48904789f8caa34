// The About dialog: shows eight texts of its caller.
#pragma once

namespace jx::admin {

// AboutRecord: texts made by ramAllocStr; null shows as "Not Available". The dialog releases them when its button is
// pressed.
struct AboutRecord {
    unsigned char* texts[8];
};

}  // namespace jx::admin
