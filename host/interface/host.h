// The host that loaded the module: its operations, and the catalogue that its messages pass through.
#pragma once
#include "host/interface/host_api.h"

namespace quillet {

/// The operations given to quillet_init.
const HostApi& hostApi();

/// The text of a message in the host's language; the text itself when the catalogue has none.
const char* translate(const char* messageId);

/// Called once by quillet_init, which owns both from then on.
void openHost(const HostApi* api);

/// Closes the message domain; what LINGclosemsgdom answered.
int closeHost();

}  // namespace quillet
