#pragma once

#include "base/export.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

namespace orv {

// The way between the drawing (WCS: the host's world axes, in the drawing's unit) and the record store (CDB:
// the analysis model's own axes and unit). Both directions transform first and scale afterwards, so a
// translation in the matrix is scaled too.
class TALDORK_API Converter {
public:
    // Changes nothing in either direction.
    Converter() = default;
    ~Converter() = default;

    // `xform` takes world axes to the store's; a length in WCS times `scale` is the length in the store.
    // Keeps `xform` as it is. Takes its inverse for the way back, with every entry that is as good as zero
    // made exactly zero, so that axes leave the store without dust. A singular matrix has no inverse: the way
    // back is then the matrix itself, cleaned likewise. A scale of 0 makes the factor from the store
    // infinite.
    void prepare(const AcGeMatrix3d& xform, double scale);

    const AcGeMatrix3d& getWcs2Cdb() const { return m_wcs2Cdb; }
    const AcGeMatrix3d& getCdb2Wcs() const { return m_cdb2Wcs; }

    // Lengths.
    double toCdb(const double& value) const { return value * m_toCdb; }
    double fromCdb(const double& value) const { return value * m_fromCdb; }

    AcGePoint3d toCdb(const AcGePoint3d& point) const { return m_wcs2Cdb * point * m_toCdb; }
    AcGePoint3d fromCdb(const AcGePoint3d& point) const { return m_cdb2Wcs * point * m_fromCdb; }
    AcGeVector3d toCdb(const AcGeVector3d& vector) const { return m_wcs2Cdb * vector * m_toCdb; }
    AcGeVector3d fromCdb(const AcGeVector3d& vector) const { return m_cdb2Wcs * vector * m_fromCdb; }

    // Directions: of length 1 afterwards whatever the scale. One without length (AcGeContext::gTol) stays
    // without.
    AcGeVector3d normalToCdb(const AcGeVector3d& normal) const { return (m_wcs2Cdb * normal).normalize(); }
    AcGeVector3d normalFromCdb(const AcGeVector3d& normal) const { return (m_cdb2Wcs * normal).normalize(); }

    // Sizes in two directions: never rotated.
    AcGeVector2d scaleToCdb(const AcGeVector2d& size) const { return size * m_toCdb; }
    AcGeVector2d scaleFromCdb(const AcGeVector2d& size) const { return size * m_fromCdb; }

private:
    AcGeMatrix3d m_wcs2Cdb;
    AcGeMatrix3d m_cdb2Wcs;
    double m_fromCdb = 1.0;
    double m_toCdb = 1.0;
};

} // namespace orv
