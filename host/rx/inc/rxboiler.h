#pragma once

#include "AdAChar.h"

class AcRxClass;
class AcRxObject;

namespace embedded::rx {
// The descriptor under a name in the class dictionary; acrx_abort if there is none, since then a class is
// used whose module does not run.
AcRxClass* registeredClass(const ACHAR* name);
// True if the class is registered under its name already. acrx_abort with "Class mismatch" if the name is
// another class's.
bool isRegistered(const AcRxClass* descriptor, const ACHAR* name);
} // namespace embedded::rx

using AppNameChangeFuncPtr = void (*)(const AcRxClass* classObj, wchar_t*& newAppName, int saveVersion);

// The static frame of a run-time class, in its public part. To be followed by a semicolon.
//   desc()   the class's descriptor
//   cast(o)  the object as this class, or null for null and for an object of another class
//   isA()    the descriptor of the object's own class
//   rxInit() registers the class; a second call does nothing
#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                                                     \
    AcRxClass* isA() const override;                                                                         \
    static AcRxClass* gpDesc;                                                                                \
    static AcRxClass* desc();                                                                                \
    static CLASS_NAME* cast(const AcRxObject* object) {                                                      \
        if (object == nullptr || !object->isKindOf(CLASS_NAME::desc()))                                      \
            return nullptr;                                                                                  \
        return static_cast<CLASS_NAME*>(const_cast<AcRxObject*>(object));                                    \
    }                                                                                                        \
    static void rxInit(AppNameChangeFuncPtr callback);                                                       \
    static void rxInit()

#define ACRX_DEFINE_MEMBERS_(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINTENANCE_VERSION, PROXY_FLAGS, MAKE,  \
                             DXF_NAME, APP_NAME)                                                             \
    AcRxClass* CLASS_NAME::gpDesc = nullptr;                                                                 \
    AcRxClass* CLASS_NAME::desc() {                                                                          \
        if (gpDesc == nullptr)                                                                               \
            gpDesc = ::embedded::rx::registeredClass(ACRX_T(#CLASS_NAME));                                   \
        return gpDesc;                                                                                       \
    }                                                                                                        \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                                        \
    void CLASS_NAME::rxInit() { CLASS_NAME::rxInit(nullptr); }                                               \
    void CLASS_NAME::rxInit(AppNameChangeFuncPtr callback) {                                                 \
        if (gpDesc != nullptr && ::embedded::rx::isRegistered(gpDesc, ACRX_T(#CLASS_NAME)))                  \
            return;                                                                                          \
        gpDesc = newAcRxClass(ACRX_T(#CLASS_NAME), ACRX_T(#PARENT_CLASS), DWG_VERSION, MAINTENANCE_VERSION,  \
                              PROXY_FLAGS, MAKE, DXF_NAME, APP_NAME, callback);                              \
    }

#define ACRX_MAKE_(CLASS_NAME) []() -> AcRxObject* { return new CLASS_NAME(); }

// For a class of which no objects are made by name. In one source file, with rxclass.h.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS)                                                \
    ACRX_DEFINE_MEMBERS_(CLASS_NAME, PARENT_CLASS, 0, 0, 0, nullptr, nullptr, nullptr)

// For a class whose objects can be made by name but stand in no drawing.
#define ACRX_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, VERSION)                                          \
    ACRX_DEFINE_MEMBERS_(CLASS_NAME, PARENT_CLASS, 0, VERSION, 0, ACRX_MAKE_(CLASS_NAME), nullptr, nullptr)

// For a class whose objects stand in drawings. DXF name and application name are written without quotes.
#define ACRX_DXF_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINTENANCE_VERSION, PROXY_FLAGS,     \
                                DXF_NAME, APP)                                                               \
    ACRX_DEFINE_MEMBERS_(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINTENANCE_VERSION, PROXY_FLAGS,            \
                         ACRX_MAKE_(CLASS_NAME), ACRX_T(#DXF_NAME), ACRX_T(#APP))

// The same for a class that drawings name but that is not made by itself.
#define ACRX_NO_CONS_DXF_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINTENANCE_VERSION,          \
                                        PROXY_FLAGS, DXF_NAME, APP)                                          \
    ACRX_DEFINE_MEMBERS_(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINTENANCE_VERSION, PROXY_FLAGS, nullptr,   \
                         ACRX_T(#DXF_NAME), ACRX_T(#APP))
