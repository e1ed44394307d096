#pragma once

#include "dbmain.h"

#include <memory>
#include <string>

namespace taldork::cli {

/// A status in words.
std::string statusText(Acad::ErrorStatus status);

/// Throws Failure unless the status is eOk: `what` of the file cannot be read, or changed, as the mode says.
void requireOpen(Acad::ErrorStatus status, AcDb::OpenMode mode, const std::string& file,
                 const std::string& what);

/// Gives an open of an object back.
struct ObjectCloser {
    void operator()(AcDbObject* object) const { object->close(); }
};

/// An object that is closed at the end of its use.
template <class Object>
using OpenObject = std::unique_ptr<Object, ObjectCloser>;

/// Empty if the object cannot be opened so, or is of another class; `status` then says why.
template <class Object>
OpenObject<Object> openObject(AcDbObjectId id, AcDb::OpenMode mode, Acad::ErrorStatus& status) {
    Object* object = nullptr;
    status = acdbOpenObject(object, id, mode);
    return OpenObject<Object>(object);
}

/// The same, throwing Failure with the file that the object is of, and with what it is.
template <class Object>
OpenObject<Object> openNeeded(AcDbObjectId id, AcDb::OpenMode mode, const std::string& file,
                              const std::string& what) {
    Acad::ErrorStatus status = Acad::eOk;
    OpenObject<Object> object = openObject<Object>(id, mode, status);
    requireOpen(status, mode, file, what);
    return object;
}

} // namespace taldork::cli
