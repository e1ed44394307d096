#pragma once

#include "base/export.h"

#include "dbxEntryPoint.h"

namespace orv {

// Hands a message with its packet to the operation of that number and answers the operation's code. Numbers
// below 0 and above 15 are no messages of the application: 0 comes back, and nothing is called.
TALDORK_API AcRx::AppRetCode answer(AcRxDbxApp& application, AcRx::AppMsgCode message, void* packet);

} // namespace orv
