#pragma once

#include "db/database_core.h"
#include "db/object_access.h"
#include "dwg/file_frame.h"
#include "dwg/object_envelope.h"

#include <unordered_map>

namespace embedded::dwg {

// Turns live objects into the bytes of a file. Adds a row to the frame's class table for a class that has
// none.
class ObjectEncoder {
public:
    ObjectEncoder(DatabaseCore& core, FileFrame& frame)
        : m_core(core), m_frame(frame), m_terminateTexts(frame.variables.textsAreTerminated()) {}

    // The body of a live object. `filed` is its envelope in the file that was read, or null: what has not
    // changed since is written in the form that it has there. `links` only matters for entities. eOk; the
    // status of the object's filer; eNotApplicable, with the reason noted, for a class that cannot stand in a
    // drawing.
    Acad::ErrorStatus encode(AcDbStub& stub, const ObjectEnvelope* filed, const EntityLinks& links,
                             Bytes& body);
    // The body of an entity that is still bytes, with other neighbours.
    Bytes relink(const ObjectSlot& slot, const ObjectParts& parts, const EntityLinks& links) const;

    // Why the last encode failed, without a name of file or object.
    const std::string& reason() const { return m_reason; }

private:
    // 0, with the reason noted, if there can be none.
    std::uint16_t typeNumberOf(const AcDbObject& object);
    std::uint16_t typeNumberOf(const AcRxClass& filed);
    std::uint16_t rowFor(const ObjectBody& body, bool isEntity);
    ObjectEnvelope envelopeOf(const AcDbStub& stub, const AcDbObject& object, const EntityLinks& links) const;
    void fillEntity(const AcDbEntity& entity, ObjectEnvelope& envelope) const;
    HandleReference referenceTo(std::uint8_t code, AcDbObjectId id) const;

    DatabaseCore& m_core;
    FileFrame& m_frame;
    const bool m_terminateTexts;
    std::unordered_map<const AcRxClass*, std::uint16_t> m_typeNumbers;
    std::string m_reason;
};

} // namespace embedded::dwg
