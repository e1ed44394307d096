#include "rx/sys_registry.h"

#include "rx/class_record.h"
#include "rx/dictionary.h"
#include "rxclass.h"
#include "rxdlinkr.h"
#include "rxsrvice.h"

namespace embedded::rx {

namespace {

// Put together at the first use, and never destroyed: modules use it in their static termination too.
Dictionary* makeRegistry() {
    auto* registry = new Dictionary(false, false);
    Adesk::UInt32 id = 0;
    registry->atPut(ACRX_CLASS_DICTIONARY, &classDictionary(), id);
    registry->atPut(ACRX_SERVICE_DICTIONARY, &serviceDictionary(), id);
    registry->atPut(ACRX_DYNAMIC_LINKER, &linker(), id);
    registry->atPut(ACRX_EVENT_OBJ, acrxEventSource(), id);
    for (void (*const init)() :
         {static_cast<void (*)()>(AcRxObject::rxInit), static_cast<void (*)()>(AcRxClass::rxInit),
          static_cast<void (*)()>(AcRxIterator::rxInit), static_cast<void (*)()>(AcRxDictionary::rxInit),
          static_cast<void (*)()>(AcRxDictionaryIterator::rxInit),
          static_cast<void (*)()>(AcRxService::rxInit), static_cast<void (*)()>(AcRxEvent::rxInit),
          static_cast<void (*)()>(AcRxEventReactor::rxInit),
          static_cast<void (*)()>(AcRxDLinkerReactor::rxInit),
          static_cast<void (*)()>(AcRxDynamicLinker::rxInit)})
        init();
    return registry;
}

} // namespace

AcRxDictionary& serviceDictionary() {
    static Dictionary& dictionary = *new Dictionary(false, false);
    return dictionary;
}

} // namespace embedded::rx

AcRxDictionary* acrxSysRegistry() {
    static AcRxDictionary* const registry = embedded::rx::makeRegistry();
    return registry;
}
