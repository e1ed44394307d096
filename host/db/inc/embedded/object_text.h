#pragma once

#include "embedded/text_filer.h"

#include <memory>
#include <string>
#include <string_view>

class AcDbObject;

// One object as group codes: the section of objects that holds it alone.
//
//     0 SECTION   2 OBJECTS   0 the class's DXF name   5 handle ... the class's groups   0 ENDSEC   0 EOF
namespace embedded {

// Writes an object that is open for read, or in no database. eOk; eNotPersistable for a class without a DXF
// name; the status of the object's own operation, and then `bytes` are empty.
Acad::ErrorStatus writeObjectText(const AcDbObject& object, TextForm form, std::string& bytes);

// Reads the first object of the bytes into one that is open for write, or in no database; handles are looked
// up in `database`. eOk; eNotThatKindOfClass if it has another DXF name; eSomeInputDataLeftUnread if the
// object's class did not take all of its groups; what the object's operation or the filer answers otherwise.
// The object may be half read after a failure. `reason` gets the filer's message.
Acad::ErrorStatus readObjectText(AcDbObject& object, std::string_view bytes, AcDbDatabase* database = nullptr,
                                 std::wstring* reason = nullptr);

// Makes the first object of the bytes by the class that is registered under its DXF name. As readObjectText,
// and `object` is empty after a failure; eClassNotRegistered if no class has that name, eAmbiguousInput if
// several have it.
Acad::ErrorStatus makeObjectFromText(std::unique_ptr<AcDbObject>& object, std::string_view bytes,
                                     AcDbDatabase* database = nullptr, std::wstring* reason = nullptr);

} // namespace embedded
