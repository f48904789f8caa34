// The About dialog: eight texts of whoever shows it.
#pragma once

namespace jx::admin {

// AboutRecord: texts of the utility library's allocator; null shows as "Not Available". The dialog releases them when
// its button is pressed.
struct AboutRecord {
    unsigned char* texts[8];
};

}  // namespace jx::admin
