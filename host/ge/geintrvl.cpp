#include "geintrvl.h"

#include <cmath>

AcGeInterval& AcGeInterval::set(double lower, double upper) { return setLower(lower).setUpper(upper); }

AcGeInterval& AcGeInterval::set(Adesk::Boolean boundedBelow, double bound) {
    set();
    return boundedBelow ? setLower(bound) : setUpper(bound);
}

AcGeInterval& AcGeInterval::set() { return *this = AcGeInterval(m_tolerance); }

AcGeInterval& AcGeInterval::setUpper(double upper) {
    m_upper = upper;
    m_isBoundedAbove = true;
    return *this;
}

AcGeInterval& AcGeInterval::setLower(double lower) {
    m_lower = lower;
    m_isBoundedBelow = true;
    return *this;
}

AcGeInterval& AcGeInterval::setTolerance(double tol) {
    m_tolerance = tol;
    return *this;
}

Adesk::Boolean AcGeInterval::isSingleton() const {
    return isBounded() && std::fabs(m_upper - m_lower) <= m_tolerance;
}

Adesk::Boolean AcGeInterval::isDisjoint(const AcGeInterval& other) const {
    return (m_isBoundedAbove && other.m_isBoundedBelow && other.m_lower > m_upper + m_tolerance) ||
           (m_isBoundedBelow && other.m_isBoundedAbove && other.m_upper < m_lower - m_tolerance);
}

Adesk::Boolean AcGeInterval::contains(const AcGeInterval& other) const {
    const bool holdsBelow =
        !m_isBoundedBelow || (other.m_isBoundedBelow && other.m_lower >= m_lower - m_tolerance);
    const bool holdsAbove =
        !m_isBoundedAbove || (other.m_isBoundedAbove && other.m_upper <= m_upper + m_tolerance);
    return holdsBelow && holdsAbove;
}

Adesk::Boolean AcGeInterval::contains(double value) const {
    return !std::isnan(value) && (!m_isBoundedBelow || value >= m_lower - m_tolerance) &&
           (!m_isBoundedAbove || value <= m_upper + m_tolerance);
}

bool AcGeInterval::operator==(const AcGeInterval& other) const {
    return m_isBoundedBelow == other.m_isBoundedBelow && m_isBoundedAbove == other.m_isBoundedAbove &&
           std::fabs(m_lower - other.m_lower) <= m_tolerance &&
           std::fabs(m_upper - other.m_upper) <= m_tolerance;
}
