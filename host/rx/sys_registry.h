#pragma once

#include "rxdict.h"
#include "rxevent.h"

class AcRxDynamicLinker;

namespace embedded::rx {

// The host's single objects as its own rooms use them.
AcRxDictionary& serviceDictionary();
AcRxDynamicLinker& linker();

} // namespace embedded::rx
