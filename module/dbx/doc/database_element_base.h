#pragma once

#include "base/export.h"
#include "dbx/doc/element_info_context.h"

#include "acadstrc.h"
#include "adesk.h"
#include "dbid.h"

#include <string>

class AcDbDwgFiler;

namespace orv::doc {

constexpr Adesk::UInt32 DatabaseElementBase_kVersion = 1;
constexpr Adesk::UInt32 DatabaseElementBase_kMagic = 0xF7EB8A3E;

// The link of an element to the record store of its system: the store's dictionary and name. The order of the
// virtual operations is known to other modules.
struct TALDORK_API DatabaseElementBase {
    virtual ~DatabaseElementBase();

    virtual void setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) = 0;
    // The dictionary of the store; null for an element without a link.
    virtual AcDbObjectId getNodDatabaseId() = 0;
    // Belongs to the element, until its link is set anew.
    virtual const std::wstring& getNodDatabaseName() const = 0;
    // Tells about the element. Nothing unless overridden.
    virtual void appendElementInfo(ElementInfoContext& info) const;

protected:
    // Files version, dictionary as a soft pointer, name and magic. Each call that fails is reported and the
    // next one made all the same: eOk, always; the filer keeps its own status.
    static Acad::ErrorStatus dwgOutFields(const DatabaseElementBase& elem, AcDbDwgFiler& filer);
    // Reads what dwgOutFields wrote and sets the link. The make-proxy status, with the link as it was, for a
    // version above DatabaseElementBase_kVersion; else eOk. Failed calls and a wrong magic are reported and
    // change nothing in that: what could not be read is null or empty.
    static Acad::ErrorStatus dwgInFields(DatabaseElementBase& elem, AcDbDwgFiler& filer);
};

} // namespace orv::doc
