#include "dbx/doc/system.h"

#include "base/assert.h"
#include "base/geometry_text.h"
#include "dbx/doc/visual_settings.h"

#include <algorithm>
#include <cstring>

namespace orv {

namespace {

constexpr int kDefaultIgdiv = 10000;
constexpr double kDefaultExtent = 20.0;

// The numbers of one kind of system.
constexpr struct {
    int first;
    int last;
    SYSTEM type;
} kKinds[] = {{0, 0, RAUM},     {20, 20, RAUM},   {10, 19, EBENE}, {30, 30, PLATTE},
              {34, 34, PLATTE}, {31, 31, PLATTE}, {35, 35, PLATTE}};

AcGePoint3d pointOf(const float (&corner)[3]) { return {corner[0], corner[1], corner[2]}; }

} // namespace

System::System()
    : m_visSettings(settings::applyVisDefaults, settings::kVisVersion, true),
      m_sysInfo(new PersistentSystemInfo) {
    m_converter.prepare(m_xformWcs2Cdb, m_sysInfo->drawing_unit_wcs2cdb);
}

System::~System() = default;

typeCDB_SYST System::record() const {
    typeCDB_SYST syst{};
    if (!m_data_10_0.is_empty())
        std::memcpy(&syst, m_data_10_0.data(), std::min(m_data_10_0.size(), sizeof syst));
    return syst;
}

void System::setField(std::size_t offset, const void* value, std::size_t size) {
    if (offset + size <= m_data_10_0.size())
        std::memcpy(m_data_10_0.data() + offset, value, size);
}

void System::setBoxCorner(std::size_t offset, const AcGePoint3d& corner) {
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const auto narrowed = static_cast<float>(corner[axis]);
        setField(offset + axis * sizeof narrowed, &narrowed, sizeof narrowed);
    }
}

SYSTEM System::get_type() const {
    ORV_ASSERT(!m_data_10_0.is_empty());
    return m_data_10_0.is_empty() ? RAUM : get_type(record());
}

SYSTEM System::get_type(const tagCDB_SYST& syst) {
    const int iprob = syst.iprob;
    ORV_ASSERT(iprob != 9)(iprob).debug("invalid/unsupported system type");
    for (const auto& kind : kKinds)
        if (kind.first <= iprob && iprob <= kind.last)
            return kind.type;
    ORV_ASSERT(false)
    (iprob).debug("System::get_type() encountered an invalid system type. Using 'RAUM'.");
    return RAUM;
}

GravityOrientation System::gravityDirection() const {
    if (m_data_10_0.is_empty())
        return kGravityNone;
    const int iachs = record().iachs;
    // The condition's text is known to others as it stands.
    // clang-format off
    ORV_ASSERT(iachs!=0 && iachs >= -3 && iachs <= 3)(iachs).debug("unknown/unhandled IACHS");
    // clang-format on
    return iachs >= -3 && iachs <= 3 ? static_cast<GravityOrientation>(iachs) : kGravityNone;
}

AcGeVector3d System::gravityDirectionVectorWcs(SYSTEM type) {
    return type == EBENE ? AcGeVector3d(0.0, -1.0, 0.0) : AcGeVector3d(0.0, 0.0, -1.0);
}

AcGeVector3d System::gravityDirectionVector() const {
    return (m_xformWcs2Cdb * gravityDirectionVectorWcs()).normal(AcGeContext::gTol);
}

int System::get_igdiv() const {
    ORV_ASSERT(!m_data_10_0.is_empty());
    return m_data_10_0.is_empty() ? kDefaultIgdiv : record().igdiv;
}

int System::get_sys_maxkn() const {
    ORV_ASSERT(!m_data_10_0.is_empty());
    return record().sys_maxkn;
}

void System::set_sys_maxkn(int number) {
    ORV_ASSERT(!m_data_10_0.is_empty());
    setField(offsetof(typeCDB_SYST, sys_maxkn), &number, sizeof number);
}

int System::get_sys_anzkn() const {
    ORV_ASSERT(!m_data_10_0.is_empty());
    return record().sys_numkn;
}

void System::set_sys_numkn(int number) {
    ORV_ASSERT(!m_data_10_0.is_empty());
    setField(offsetof(typeCDB_SYST, sys_numkn), &number, sizeof number);
}

void System::getExtents(AcGePoint3d& min, AcGePoint3d& max) const {
    ORV_ASSERT(!m_data_10_0.is_empty());
    if (m_data_10_0.is_empty()) {
        min.set(0.0, 0.0, 0.0);
        max.set(kDefaultExtent, kDefaultExtent, 0.0);
        return;
    }
    const typeCDB_SYST syst = record();
    min = pointOf(syst.box_min);
    max = pointOf(syst.box_max);
}

void System::getExtentsWCS(AcGePoint3d& min, AcGePoint3d& max) const {
    getExtents(min, max);
    min = m_converter.fromCdb(min);
    max = m_converter.fromCdb(max);
}

void System::set_sys_box(const AcGePoint3d& min, const AcGePoint3d& max) {
    ORV_ASSERT(!m_data_10_0.is_empty());
    if (m_data_10_0.is_empty())
        return;
    ORV_ASSERT(min.x <= max.x)(min)(max).debug("invalid system box");
    ORV_ASSERT(min.y <= max.y)(min)(max).debug("invalid system box");
    ORV_ASSERT(min.z <= max.z)(min)(max).debug("invalid system box");
    const auto toStore = [this](const AcGePoint3d& corner) {
        return (m_xformWcs2Cdb * corner) * m_converter.toCdb(1.0);
    };
    setBoxCorner(offsetof(typeCDB_SYST, box_min), toStore(min));
    setBoxCorner(offsetof(typeCDB_SYST, box_max), toStore(max));
}

void System::setDefaultExtents() {
    ORV_ASSERT(!m_data_10_0.is_empty());
    if (m_data_10_0.is_empty())
        return;
    const typeCDB_SYST syst = record();
    AcGePoint3d max = pointOf(syst.box_max);
    if (!max.asVector().isZeroLength(AcGeContext::gTol) ||
        !pointOf(syst.box_min).asVector().isZeroLength(AcGeContext::gTol))
        return;
    max += AcGeVector3d(kDefaultExtent, kDefaultExtent, 0.0);
    setBoxCorner(offsetof(typeCDB_SYST, box_max), max);
}

void System::getCoordinateSystem(AcGeVector3d& x, AcGeVector3d& y, AcGeVector3d& z) const {
    x = m_converter.normalFromCdb(AcGeVector3d::kXAxis);
    y = m_converter.normalFromCdb(AcGeVector3d::kYAxis);
    z = m_converter.normalFromCdb(AcGeVector3d::kZAxis);
}

void System::getCoordinateSystem(AcGePoint3d& origin, AcGeVector3d& x, AcGeVector3d& y,
                                 AcGeVector3d& z) const {
    getCoordinateSystem(x, y, z);
    origin = m_converter.fromCdb(AcGePoint3d::kOrigin);
}

void System::getCoordinateSystem(AcGeMatrix3d& matrix) const {
    AcGePoint3d origin;
    AcGeVector3d x;
    AcGeVector3d y;
    AcGeVector3d z;
    getCoordinateSystem(origin, x, y, z);
    matrix = AcGeMatrix3d::alignCoordSys(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                         AcGeVector3d::kZAxis, origin, x, y, z);
}

double System::scaleWcs2Cdb() const {
    ORV_ASSERT(m_sysInfo);
    return m_sysInfo->drawing_unit_wcs2cdb;
}

double System::scaleCdb2Wcs() const {
    ORV_ASSERT(m_sysInfo);
    ORV_ASSERT(m_sysInfo->drawing_unit_wcs2cdb > 0.);
    const double scale = m_sysInfo->drawing_unit_wcs2cdb;
    return scale == 0.0 ? 1.0 : 1.0 / scale;
}

} // namespace orv
