// Measured beside the store: GLib's key files.
#include <glib.h>

#include <memory>

#include "peers.h"

namespace jx::bench {

namespace {

struct Release {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(gchar* text) const { g_free(text); }
    void operator()(gchar** list) const { g_strfreev(list); }
};

using KeyFile = std::unique_ptr<GKeyFile, Release>;
using Text = std::unique_ptr<gchar, Release>;
using List = std::unique_ptr<gchar*, Release>;

KeyFile load(const std::string& path, GKeyFileFlags flags) {
    KeyFile file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.c_str(), flags, nullptr))
        file.reset();
    return file;
}

bool read(const std::string& path, const std::string& section, const std::string& key, std::string& value) {
    const KeyFile file = load(path, G_KEY_FILE_NONE);
    if (file == nullptr)
        return false;
    const Text found(g_key_file_get_value(file.get(), section.c_str(), key.c_str(), nullptr));
    if (found == nullptr)
        return false;
    value = found.get();
    return true;
}

bool list(const std::string& path, const std::string& section, std::string& names) {
    const KeyFile file = load(path, G_KEY_FILE_NONE);
    if (file == nullptr)
        return false;
    gsize count = 0;
    const List keys(g_key_file_get_keys(file.get(), section.c_str(), &count, nullptr));
    names.clear();
    for (gsize i = 0; i < count; ++i)
        names.append(keys.get()[i]).push_back('\0');
    return keys != nullptr;
}

bool write(const std::string& path, const std::string& section, const std::string& key, const std::string& value) {
    const KeyFile file = load(path, G_KEY_FILE_KEEP_COMMENTS);
    if (file == nullptr)
        return false;
    g_key_file_set_value(file.get(), section.c_str(), key.c_str(), value.c_str());
    gsize length = 0;
    const Text text(g_key_file_to_data(file.get(), &length, nullptr));
    constexpr auto kSafely =
        static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE);
    return g_file_set_contents_full(path.c_str(), text.get(), static_cast<gssize>(length), kSafely, 0600, nullptr);
}

}  // namespace

const Peer kGlib = {"glib", read, list, write};

}  // namespace jx::bench
