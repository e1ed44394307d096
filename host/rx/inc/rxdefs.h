#pragma once

#include "AdAChar.h"

// The entries of the system registry.
#define ACRX_CLASS_DICTIONARY L"ClassDictionary"
#define ACRX_DYNAMIC_LINKER L"DynamicLinker"
#define ACRX_SERVICE_DICTIONARY L"ServiceDictionary"
#define ACRX_EVENT_OBJ L"AcRxEvent"

namespace AcRx {

// What the host tells an application through its entry point.
enum AppMsgCode : int {
    kNullMsg = -1,
    kInitAppMsg = 0,
    kUnloadAppMsg = 1,
    kLoadDwgMsg = 2,
    kUnloadDwgMsg = 3,
    kInvkSubrMsg = 4,
    kCfgMsg = 5,
    kEndMsg = 6,
    kQuitMsg = 7,
    kSaveMsg = 8,
    kDependencyMsg = 9,
    kNoDependencyMsg = 10,
    kOleUnloadAppMsg = 11,
    kPreQuitMsg = 12,
    kInitDialogMsg = 13,
    kEndDialogMsg = 14,
    kSuspendMsg = 15
};

// What an application answers. Anything else to kInitAppMsg refuses the load.
enum AppRetCode { kRetOK = 0, kRetError = 3 };

// In which order a dictionary's iterator walks.
enum DictIterType { kDictSorted = 0, kDictCollated = 1 };

// How two objects compare.
enum Ordering { kLessThan = -1, kEqual = 0, kGreaterThan = 1, kNotOrderable = 2 };

} // namespace AcRx

// The two entry points of a module.
using AcRxEntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode message, void* packet);
using AcRxApiVersionEntry = int (*)();

// What acrxGetApiVersion answers: major release in the high half, minor in the low one.
constexpr int kAcRxApiVersion = 0x130000;

// Ends the process after telling why; `format` is a wide printf text. For states in which going on would harm
// a drawing. Does not come back, unless a replaced handler throws (embedded/abort.h).
[[noreturn]] void acrx_abort(const ACHAR* format, ...);
