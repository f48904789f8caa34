// Who owns a file and who may do what with it, in words.
#pragma once

#include <string>

namespace jx::doctor {

// "-rw-r----- anna:staff"; numbers for accounts without a name, "" for a file whose state cannot be asked for.
std::string rightsText(const std::string& path);

// Who may read a file by its mode: "anna only", "anna and group staff", "everybody", "nobody"; "" as above.
std::string readersText(const std::string& path);

// "user anna (1000)": who this process acts for.
std::string thisUserText();

}  // namespace jx::doctor
