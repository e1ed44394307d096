#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/export.h"

#include "AcString.h"
#include "dbmain.h"

#include <set>

namespace orv {

// A selection of the drawing's objects that is kept in the drawing. It owns none of them. Who keeps
// selections reaches the sets directly. docs/named-selection.md has what it files.
class TALDORK_API ORV_NamedSelection : public AcDbObject {
public:
    ORV_DECLARE_CLASS(ORV_NamedSelection);

    static constexpr Adesk::Int32 kVersion = 3;
    // The class's mark, for those who look for it; it is not filed.
    static constexpr Adesk::Int32 kMagic = static_cast<Adesk::Int32>(0xa6f84cde);

    ORV_NamedSelection();
    // Copy the sets, and what AcDbObject::copyFrom takes over of the other's own state; the copy is in no
    // database. The other needs read, what is assigned to needs write. Nothing happens for itself.
    ORV_NamedSelection(const ORV_NamedSelection& other);
    ORV_NamedSelection& operator=(const ORV_NamedSelection& other);
    ~ORV_NamedSelection() override;

    // 301 for a version above kVersion, with the sets as they were. Otherwise the status of the first read
    // that failed, with what was read until then, or 301 for an exception out of a filer. Version 1 has no
    // members, and those that are here stay.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    // Always at kVersion. An object whose drawing has gone is left out; a member is not. The status of the
    // first write that failed; 2 for an exception out of a filer.
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    std::set<AcDbObjectId> m_objects;
    std::set<AcDbObjectId> m_members;
    std::set<AcString> m_names;

private:
    void writeContent(AcDbDwgFiler& filer) const;
    // eOk, or 301 for the version; throws the status of a read.
    Acad::ErrorStatus readContent(AcDbDwgFiler& filer);
};

} // namespace orv
