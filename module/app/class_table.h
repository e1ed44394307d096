#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"

namespace orv {

// The run-time classes of this module, with what the host is told of each.
extern const ClassRow kObjCdbRecordRow;
extern const ClassRow kCdbRecordRow;
extern const ClassRow kLoadRow;
extern const ClassRow kNamedSelectionRow;
extern const ClassRow kCCSysParRow;

// One step of the registration.
struct RegisteredClass {
    const ClassRow* row;
    void (*rxInit)();
};

// The table in the order of registration.
extern const RegisteredClass kRegisteredClasses[];
extern const int kRegisteredClassCount;

} // namespace orv
