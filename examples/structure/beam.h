#pragma once

#include "structure/element_of.h"

#include "orvshape/segmented_curve.h"

#include <boost/shared_ptr.hpp>

namespace structure {

class LoadConnections;
class Node;

// A beam or a column: a curve with a section that may be turned about it. Its ends may stand at nodes, which
// follow when it moves, and loads may act on it, which follow too. The drawing keeps a beam's nodes and loads
// as long as the beam, and they go with it into another drawing.
class STRUCTURE_API Beam : public ElementOf<ORV_SegmentedCurve> {
public:
    ORV_DECLARE_CLASS(Beam);

    static constexpr Adesk::Int32 kVersion = 1;
    static constexpr Adesk::UInt32 kMagic = 0x53544245;

    // Without a curve and without plugins: as the host makes it, to be read.
    Beam();
    ~Beam() override;
    // A fresh beam, in no drawing. One without a curve if the segment is none (see orv::CurveSegment).
    explicit Beam(const orv::CurveSegment& segment);

    const wchar_t* kind() const override { return L"beam"; }
    AcGePoint3d labelPoint() const override;
    // Along the beam.
    AcGeVector3d labelDirection() const override;

    // How far the section is turned about the beam, in radians. Needs read; write.
    double roll() const;
    void setRoll(double roll);

    // Null where an end is free. Needs read.
    AcDbObjectId startNode() const;
    AcDbObjectId endNode() const;
    // Puts the ends at nodes, and lets go of those where they were: these may not be open, unless in a
    // transaction. Null leaves an end free. Needs write, as the nodes do. eOk; eWrongDatabase for a node of
    // another drawing, eNotApplicable for a beam whose stream had no connections, with nothing changed.
    Acad::ErrorStatus connect(Node* start, Node* end);

    // The loads on it; null before there was any. Needs read.
    LoadConnections* loads() const;
    // The beam's side of Load::attachTo. Needs write; the beam that lets go may not be open, unless in a
    // transaction.
    void takeLoad(const AcDbObjectId& load);
    static void letGoOfLoad(const AcDbObjectId& beam, const AcDbObjectId& load);

protected:
    void writeOwn(AcDbDwgFiler& filer) const override;
    void readOwn(AcDbDwgFiler& filer) override;
    bool onSave(orv::KeyValueStorage& storage) const override;
    bool onLoad(const orv::KeyValueStorage& storage) override;

    void onPostClone() override;
    // The nodes come to its ends, and the loads to it.
    void onMoved() override;
    Acad::ErrorStatus auditOwn() const override;

    Acad::ErrorStatus subGetClassID(CLSID* classId) const override;

private:
    AcDbObjectId take(Node* node);
    void letGo(const AcDbObjectId& id);
    void layLoads();

    double m_roll = 0.0;
    AcDbObjectId m_startNode;
    AcDbObjectId m_endNode;
};

} // namespace structure
