#include "dbx/doc/converter.h"

#include <cmath>

namespace orv {

namespace {

// Below this an entry of an inverse is what rounding left of a zero.
constexpr double kDust = 2.220446049250313e-10;

} // namespace

void Converter::prepare(const AcGeMatrix3d& xform, double scale) {
    m_wcs2Cdb = xform;
    m_cdb2Wcs = xform.inverse();
    for (auto& row : m_cdb2Wcs.entry)
        for (double& entry : row)
            if (std::fabs(entry) < kDust)
                entry = 0.0;
    m_toCdb = scale;
    m_fromCdb = 1.0 / scale;
}

} // namespace orv
