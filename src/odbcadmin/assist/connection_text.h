// What a trial connection has shown, in sentences.
#pragma once

#include <string>

#include "odbcadmin/assist/chosen_source.h"

namespace jx::assist {

struct ConnectionText {
    bool isConnected = false;
    std::string text;
};

// Connects with a data source in the helper program, which may take up to twenty seconds, and says what came of it. If
// it was not connected: what the driver said, with what that means, and the doctor's first finding. Secrets are stars.
// One of the system's that is shadowed is not tried: whoever asks for its name gets the user's own.
ConnectionText connectionText(const ChosenSource& chosen);

}  // namespace jx::assist
