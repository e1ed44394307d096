#pragma once

#include "dbcurve.h"
#include "entities/object_iterator.h"

#include <memory>

class AcDbSequenceEnd;
class AcDbVertex;

namespace embedded {

class OwnedChain;

// What polylines have in common whose vertices are objects of their own. They own them: erasing a polyline,
// or bringing it back, takes those along that went with it. A polyline that is in no database keeps its
// vertices in memory; they become objects of the database when it has come into one and is closed.
class VertexPolyline : public AcDbCurve {
public:
    ~VertexPolyline() override;

    // The caller deletes it.
    AcDbObjectIterator* vertexIterator() const;
    // Statuses of opening; eNullObjectId for a polyline without vertices.
    Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) const;
    // A copy in no database, with copies of the vertices.
    AcRxObject* clone() const override;

protected:
    VertexPolyline();

    // eNullEntityPointer; eAlreadyInDb for a vertex that is in a database.
    Acad::ErrorStatus append(AcDbObjectId& id, AcDbVertex* vertex);
    // Behind the vertex with that id, at the begin for null. Also eNoDatabase; eKeyNotFound.
    Acad::ErrorStatus insertBehind(AcDbObjectId& id, AcDbObjectId before, AcDbVertex* vertex);
    // eKeyNotFound for what is no vertex of this polyline.
    Acad::ErrorStatus refuseForeign(AcDbObjectId id) const;

    Acad::ErrorStatus subClose() override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

    std::unique_ptr<OwnedChain> m_vertices;

private:
    friend const OwnedChain* ownedChainOf(const AcDbObject& object);
    void store();
};

} // namespace embedded
