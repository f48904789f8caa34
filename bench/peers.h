// Two well-known INI libraries. Other processes may write the file and neither notices a change, so each call opens the
// file, parses it and looks the key up.
#pragma once

#include <string>

namespace jx::bench {

// Peer: one library's way to read a key, to list a section's keys and to change a key durably. Each returns false when
// it failed. A change does not lock: of two changes made at the same time one is lost.
struct Peer {
    const char* name;
    bool (*read)(const std::string& path, const std::string& section, const std::string& key, std::string& value);
    bool (*list)(const std::string& path, const std::string& section, std::string& names);  // each with its NUL
    bool (*write)(const std::string& path, const std::string& section, const std::string& key,
                  const std::string& value);
};

// GLib's key files; written with g_file_set_contents_full, made consistent and durable.
extern const Peer kGlib;

// SimpleIni; its text is written by replaceDurably, since its own saving is neither atomic nor durable.
extern const Peer kSimpleIni;

}  // namespace jx::bench
