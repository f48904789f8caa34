// The record of the About dialog.
#pragma once

namespace jx::admin {

// AboutRecord: eight texts of the utility library's allocator; null shows as "Not Available". The dialog releases them
// when its button is pressed.
struct AboutRecord {
    unsigned char* texts[8];
};

}  // namespace jx::admin
