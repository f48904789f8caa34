// What a trial connection has shown, in sentences.
#pragma once

#include <string>

namespace jx::assist {

struct ConnectionText {
    bool isConnected = false;
    std::string text;
};

// Connects with a data source in the helper program, which may take up to twenty seconds, and says what came of it. If
// it was not connected: what the driver said, with what that means, and the doctor's first finding. Secrets are stars.
ConnectionText connectionText(const std::string& dataSource);

}  // namespace jx::assist
