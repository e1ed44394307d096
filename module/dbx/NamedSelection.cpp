#include "dbx/NamedSelection.h"

#include "app/class_table.h"
#include "base/guard.h"
#include "base/product_name.h"
#include "orvcore/warn_on_new_version.h"

namespace orv {

ORV_DEFINE_CLASS(ORV_NamedSelection, kNamedSelectionRow)

namespace {

// Releases up to this one filed a further list of objects, which is of no use any more, and up to the one
// before no members.
constexpr Adesk::Int32 kLastWithDroppedList = 2;
constexpr Adesk::Int32 kFirstWithMembers = 2;

AcDbSoftPointerId readPointer(AcDbDwgFiler& filer) {
    AcDbSoftPointerId id;
    ORV_ASSERT_STATUS(filer.readSoftPointerId(&id));
    return id;
}

Adesk::UInt32 readCount(AcDbDwgFiler& filer) {
    Adesk::UInt32 count = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&count));
    return count;
}

AcString readName(AcDbDwgFiler& filer) {
    AcString name;
    ORV_ASSERT_STATUS(filer.readString(name));
    return name;
}

} // namespace

ORV_NamedSelection::ORV_NamedSelection() = default;
ORV_NamedSelection::~ORV_NamedSelection() = default;

ORV_NamedSelection::ORV_NamedSelection(const ORV_NamedSelection& other) : AcDbObject() { *this = other; }

ORV_NamedSelection& ORV_NamedSelection::operator=(const ORV_NamedSelection& other) {
    if (this != &other) {
        ORV_NOTE_STATUS(AcDbObject::copyFrom(&other));
        m_objects = other.m_objects; // as a whole: filing leaves ids out
        m_members = other.m_members;
        m_names = other.m_names;
    }
    return *this;
}

Acad::ErrorStatus ORV_NamedSelection::dwgOutFields(AcDbDwgFiler* filer) const {
    ORV_ASSERT(filer);
    assertReadEnabled();
    if (filer == nullptr)
        return Acad::eNullPtr;
    try {
        ORV_ASSERT_STATUS(AcDbObject::dwgOutFields(filer));
        writeContent(*filer);
        return Acad::eOk;
    } catch (const Acad::ErrorStatus& es) {
        return es;
    }
    ORV_GUARD
    return status::kFilingFailed;
}

void ORV_NamedSelection::writeContent(AcDbDwgFiler& filer) const {
    ORV_ASSERT_STATUS(filer.writeInt32(kVersion));
    for (const AcDbObjectId& id : m_objects)
        if (id.isValid())
            ORV_ASSERT_STATUS(filer.writeSoftPointerId(id));
    ORV_ASSERT_STATUS(filer.writeSoftPointerId(AcDbObjectId::kNull));
    ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(m_names.size())));
    for (const AcString& name : m_names)
        ORV_ASSERT_STATUS(filer.writeString(name));
    ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(m_members.size())));
    for (const AcDbObjectId& id : m_members)
        ORV_ASSERT_STATUS(filer.writeSoftPointerId(id));
}

Acad::ErrorStatus ORV_NamedSelection::dwgInFields(AcDbDwgFiler* filer) {
    ORV_ASSERT(filer);
    assertWriteEnabled();
    if (filer == nullptr)
        return Acad::eNullPtr;
    try {
        ORV_ASSERT_STATUS(AcDbObject::dwgInFields(filer));
        return readContent(*filer);
    } catch (const Acad::ErrorStatus& es) {
        return es;
    }
    ORV_GUARD
    return status::kMakeProxy;
}

Acad::ErrorStatus ORV_NamedSelection::readContent(AcDbDwgFiler& filer) {
    Adesk::Int32 version = 0;
    ORV_ASSERT_STATUS(filer.readInt32(&version));
    if (version > kVersion)
        return status::kMakeProxy;
    if (version != kVersion)
        orv_warnOnNewVersion(version, kVersion, productName());

    m_objects.clear();
    for (AcDbObjectId id = readPointer(filer); !id.isNull(); id = readPointer(filer))
        m_objects.insert(id);
    if (version <= kLastWithDroppedList)
        for (Adesk::UInt32 left = readCount(filer); left > 0; --left)
            readPointer(filer);
    m_names.clear();
    for (Adesk::UInt32 left = readCount(filer); left > 0; --left)
        m_names.insert(readName(filer));
    if (version < kFirstWithMembers)
        return Acad::eOk;
    m_members.clear();
    for (Adesk::UInt32 left = readCount(filer); left > 0; --left)
        m_members.insert(readPointer(filer));
    return Acad::eOk;
}

} // namespace orv
