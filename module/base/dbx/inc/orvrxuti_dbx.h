#pragma once

#include "arx/types.h"
#include "base/assert.h"
#include "base/export.h"
#include "base/guard.h"

#include "acadstrc.h"
#include "rxclass.h"
#include "rxobject.h"

// Runs a call of a filer. A failure is reported and thrown as its status; the filing function catches it
// around its whole body and returns it. So filing stops at the first call that fails, and the host sees that
// very status.
#define ORV_ASSERT_STATUS(call)                                                                              \
    do {                                                                                                     \
        const Acad::ErrorStatus errorStatus = (call);                                                        \
        if (errorStatus != Acad::eOk) {                                                                      \
            ::orv::checkErrorStatus(errorStatus, Acad::eOk, "errorStatus", __FILE__, __LINE__);              \
            throw errorStatus;                                                                               \
        }                                                                                                    \
    } while (false)

// For a call that may fail without harm: only a status that the host has no text for is reported.
#define ORV_NOTE_STATUS(status)                                                                              \
    do {                                                                                                     \
        const Acad::ErrorStatus noted = (status);                                                            \
        if (noted != Acad::eOk)                                                                              \
            ::orv::detail::noteStatus(noted, __FILE__, __LINE__);                                            \
    } while (false)

namespace orv {

// What is registered with the host for one class.
struct ClassRow {
    const wchar_t* className;
    const wchar_t* parentName;
    int dwgVersion;
    int maintenanceRelease;
    int proxyFlags;
    const wchar_t* dxfName;
    const wchar_t* appName;
};

using ProxySaveCallback = void (*)(const AcRxClass*, wchar_t*&, int);
using PseudoConstructor = AcRxObject* (*)();

namespace detail {

TALDORK_API void noteStatus(Acad::ErrorStatus stat, const char* file, int line);

// Registers a class with the host unless it stands in the class dictionary already. A class name that is
// bound to another descriptor ends the process.
TALDORK_API void registerClass(AcRxClass*& desc, const ClassRow& row, PseudoConstructor make,
                               ProxySaveCallback callback);
// The descriptor, looked up by name where it is not known yet.
TALDORK_API AcRxClass* descriptorOf(AcRxClass*& desc, const wchar_t* className);

} // namespace detail
} // namespace orv

// The static frame of a class that the host registers: in the class's public part, and once in its source
// file.
#define ORV_DECLARE_CLASS(Class)                                                                             \
    static AcRxClass* gpDesc;                                                                                \
    AcRxClass* isA() const override;                                                                         \
    static AcRxClass* desc();                                                                                \
    static Class* cast(const AcRxObject* object);                                                            \
    static AcRxObject* makeEmpty();                                                                          \
    static void rxInit();                                                                                    \
    static void rxInit(void (*callback)(const AcRxClass*, wchar_t*&, int))

#define ORV_DEFINE_CLASS(Class, row)                                                                         \
    AcRxClass* Class::gpDesc = nullptr;                                                                      \
    AcRxClass* Class::desc() { return ::orv::detail::descriptorOf(gpDesc, (row).className); }                \
    AcRxClass* Class::isA() const { return Class::desc(); }                                                  \
    Class* Class::cast(const AcRxObject* object) {                                                           \
        return object != nullptr && object->isKindOf(Class::desc())                                          \
                   ? static_cast<Class*>(const_cast<AcRxObject*>(object))                                    \
                   : nullptr;                                                                                \
    }                                                                                                        \
    AcRxObject* Class::makeEmpty() { return new Class; }                                                     \
    void Class::rxInit() { Class::rxInit(nullptr); }                                                         \
    void Class::rxInit(void (*callback)(const AcRxClass*, wchar_t*&, int)) {                                 \
        ::orv::detail::registerClass(gpDesc, (row), &Class::makeEmpty, callback);                            \
    }
