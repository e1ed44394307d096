#pragma once

#include "db/database_core.h"
#include "db/object_access.h"
#include "dwg/file_frame.h"
#include "dwg/object_envelope.h"

#include <unordered_map>

namespace embedded::dwg {

// The objects of the file that a database was read from. A stub's fileIndex counts the frame's slots.
class FileSource : public ObjectSource {
public:
    // Both must outlive the source.
    FileSource(DatabaseCore& core, FileFrame& frame) : m_core(core), m_frame(frame) {}

    // Beside what ObjectSource says: eDwgCRCDoesNotMatch for an object with a wrong check sum,
    // eDwgObjectImproperlyRead for one that does not hold together or whose type nobody knows.
    Acad::ErrorStatus load(AcDbStub& stub, std::unique_ptr<AcDbObject>& object) override;
    AcRxClass* classOf(const AcDbStub& stub) override;
    std::wstring dxfNameOf(const AcDbStub& stub) override;
    AcDbObjectId ownerOf(const AcDbStub& stub) override;
    std::vector<AcDbObjectId> entitiesOf(AcDbObjectId first, AcDbObjectId last) override;
    bool canComeAlive(const AcDbStub& stub) override;

private:
    const ObjectSlot& slotOf(const AcDbStub& stub) const { return m_frame.parts.objects[stub.fileIndex]; }
    const ObjectKind* kindOf(const AcDbStub& stub);
    Acad::ErrorStatus takeApart(const AcDbStub& stub, const ObjectKind& kind, ObjectParts& parts);
    Acad::ErrorStatus readLive(AcDbStub& stub, const AcRxClass& maker, const ObjectParts& parts,
                               std::unique_ptr<AcDbObject>& object);
    // `declined`: its own reader asked for a proxy.
    std::unique_ptr<AcDbObject> makeStandIn(AcDbStub& stub, const ObjectKind& kind, const ObjectParts& parts,
                                            bool declined);
    AcDbObjectId ownerIn(const ObjectEnvelope& envelope, const AcDbStub& stub);
    void applyEnvelope(const AcDbStub& stub, const ObjectEnvelope& envelope, AcDbObject& object);
    void applyEntity(const AcDbStub& stub, const EntityPart& part, AcDbEntity& entity);
    AcDbObjectId idOf(const HandleReference& reference, const AcDbStub& from);
    // Notes the reason for the one who asks why, and answers the status.
    Acad::ErrorStatus refuse(const AcDbStub& stub, Acad::ErrorStatus es, const std::string& reason);

    DatabaseCore& m_core;
    FileFrame& m_frame;
    // Objects whose reader asked for a proxy, and how often classes had been registered by then: the same
    // class is not asked again.
    std::unordered_map<const AcDbStub*, unsigned> m_declined;
};

} // namespace embedded::dwg
