// Measured beside the store: SimpleIni.
// Bytes as they are, which is also the fastest way it has.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include "peers.h"
#include "yardsticks.h"

namespace jx::bench {

namespace {

bool load(CSimpleIniA& ini, const std::string& path) {
    return ini.LoadFile(path.c_str()) >= 0;
}

bool read(const std::string& path, const std::string& section, const std::string& key, std::string& value) {
    CSimpleIniA ini;
    if (!load(ini, path))
        return false;
    const char* found = ini.GetValue(section.c_str(), key.c_str());
    if (found == nullptr)
        return false;
    value = found;
    return true;
}

bool list(const std::string& path, const std::string& section, std::string& names) {
    CSimpleIniA ini;
    CSimpleIniA::TNamesDepend keys;
    if (!load(ini, path) || !ini.GetAllKeys(section.c_str(), keys))
        return false;
    keys.sort(CSimpleIniA::Entry::LoadOrder());
    names.clear();
    for (const CSimpleIniA::Entry& key : keys)
        names.append(key.pItem).push_back('\0');
    return true;
}

bool write(const std::string& path, const std::string& section, const std::string& key, const std::string& value) {
    CSimpleIniA ini;
    if (!load(ini, path) || ini.SetValue(section.c_str(), key.c_str(), value.c_str()) < 0)
        return false;
    std::string text;
    return ini.Save(text) >= 0 && replaceDurably(path, text);
}

}  // namespace

const Peer kSimpleIni = {"simpleini", read, list, write};

}  // namespace jx::bench
