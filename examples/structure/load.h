#pragma once

#include "dbx/elem/load_types.h"
#include "structure/element_of.h"
#include "structure/load_shape.h"

#include "orvshape/segmented_curve.h"

#include <boost/shared_ptr.hpp>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace orv::elem {
struct GenericLoad;
}

namespace structure {

class Beam;
class BeamLoad;

// What a load is, whatever it acts on.
struct LoadProperties {
    int type = orv::elem::kLoadTypeGravity;
    LoadShape shape = LoadShape::kLinear;
    std::vector<double> values; // one for each vertex; at least one
    std::wstring unit;          // stands behind them in the texts
    std::set<unsigned int> cases = {1};
    orv::elem::LOAD_KIND kind = orv::elem::kLoadKindDefault;
    std::wstring name; // in front of the texts
};

// A load in the drawing. What it is and how it looks is the matter of its plugin, a FreeLoad or a BeamLoad;
// the element itself is the curve that the arrows stand on: the line, the outline of an area, the loaded part
// of a beam. A point load has an empty one.
//
// A load on a beam is where its beam is: it comes back to it when it is moved, goes with it when it is
// erased, and is copied only together with it.
class STRUCTURE_API Load : public ElementOf<ORV_SegmentedCurve> {
public:
    ORV_DECLARE_CLASS(Load);

    static constexpr Adesk::Int32 kVersion = 1;
    static constexpr Adesk::UInt32 kMagic = 0x53544c4f;

    // Without a curve and without plugins: as the host makes it, to be read.
    Load();
    ~Load() override;

    // Fresh loads, in no drawing, with a number, a name and a plugin. Free ones; null for what makes no curve
    // or for no values.
    static std::unique_ptr<Load> atPoint(const AcGePoint3d& point, const LoadProperties& properties);
    // The values stand at the ends of the pieces, if there are as many, else at equal distances. Where they
    // are fewer, vertices with values between them are added: see verticesAlong.
    static std::unique_ptr<Load> alongLine(const std::vector<AcGePoint3d>& points,
                                           const LoadProperties& properties);
    static std::unique_ptr<Load> overArea(const std::vector<AcGePoint3d>& corners,
                                          const LoadProperties& properties);
    // For a part of a beam, in shares of its length; a point load acts at `from`. It stands nowhere before
    // attachTo.
    static std::unique_ptr<Load> forBeam(double from, double to, const LoadProperties& properties);

    const wchar_t* kind() const override { return L"load"; }
    AcGePoint3d labelPoint() const override;

    // Needs read. Null for an element whose stream did not have it.
    orv::elem::GenericLoad* plugin() const;
    // The beam it stands on; null for a free load. Needs read.
    AcDbObjectId beam() const;

    // Puts it on a beam, which knows of it then, and lets go of the one where it was: that may not be open,
    // unless in a transaction. Needs write, as the beam does. eOk; eWrongDatabase for a beam of another
    // drawing, eNotApplicable for a free load, with nothing changed.
    Acad::ErrorStatus attachTo(Beam& beam);
    // Lays the curve and the vertices where they belong on its beam; one that is there already is not
    // written, unless it is local and turns with the beam. A projected load is laid across its direction, in
    // the level of the place of the beam that it meets first. Needs write.
    void layAlong(const Beam& beam);
    // The beam's axes are others: a local load is drawn anew. It is written, so that an undo makes it look at
    // the beam again. Needs write.
    void turnWithBeam();

protected:
    void writeOwn(AcDbDwgFiler& filer) const override;
    void readOwn(AcDbDwgFiler& filer) override;

    Acad::ErrorStatus transformOwn(const AcGeMatrix3d& xform) override;
    // The curve of a free load; that of a load on a beam lies in the beam.
    void drawOwn(AcGiWorldDraw& draw) override;
    Acad::ErrorStatus auditOwn() const override;
    Acad::ErrorStatus ownGripPoints(AcGePoint3dArray& points, AcDbIntArray& snaps,
                                    AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus moveOwnGripPoints(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus ownGrips(AcDbGripDataPtrArray& grips, double unitSize, int gripSize,
                               const AcGeVector3d& viewDirection, int flags) const override;
    Acad::ErrorStatus moveOwnGrips(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset,
                                   int flags) override;

    void onPostClone() override;
    // A load on a beam comes back to it.
    void onMoved() override;

    Acad::ErrorStatus subGetClassID(CLSID* classId) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;

private:
    Load(const boost::shared_ptr<orv::elem::GenericLoad>& plugin, orv::elem::LoadDistribution distribution,
         const LoadProperties& properties);

    BeamLoad* onBeam() const;
    bool isPoint() const;
    AcGePoint3d point() const;
    void movePoint(const AcGeVector3d& offset);
    void spreadVertices(double from, double to, const std::vector<double>& values);
    void layPoint(const Beam& beam, double distance);
    void layCurve(const Beam& beam, double from, double to);
};

} // namespace structure
