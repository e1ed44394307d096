#pragma once

#include "adesk.h"

// The numbers from one bound to another, both included, or without a bound at either side. All comparisons
// with a bound allow the interval's tolerance. A bound that is not there reads as 0.
class AcGeInterval {
public:
    // Without bounds.
    explicit AcGeInterval(double tol = 1.0e-12) : m_tolerance(tol) {}
    // Nothing puts bounds in order: with the lower one above the upper one, beyond the tolerance, no number
    // is inside.
    AcGeInterval(double lower, double upper, double tol = 1.0e-12) : m_tolerance(tol) { set(lower, upper); }
    // With one bound: the lower one for true.
    AcGeInterval(Adesk::Boolean boundedBelow, double bound, double tol = 1.0e-12) : m_tolerance(tol) {
        set(boundedBelow, bound);
    }

    double lowerBound() const { return m_lower; }
    double upperBound() const { return m_upper; }
    // A number inside, the lower bound where there is one.
    double element() const { return m_isBoundedBelow ? m_lower : m_isBoundedAbove ? m_upper : 0.0; }
    void getBounds(double& lower, double& upper) const {
        lower = m_lower;
        upper = m_upper;
    }
    // -1 unless it is bounded.
    double length() const { return isBounded() ? m_upper - m_lower : -1.0; }
    double tolerance() const { return m_tolerance; }

    AcGeInterval& set(double lower, double upper);
    AcGeInterval& set(Adesk::Boolean boundedBelow, double bound);
    // Takes both bounds away.
    AcGeInterval& set();
    AcGeInterval& setUpper(double upper);
    AcGeInterval& setLower(double lower);
    AcGeInterval& setTolerance(double tol);

    Adesk::Boolean isBounded() const { return m_isBoundedBelow && m_isBoundedAbove; }
    Adesk::Boolean isBoundedAbove() const { return m_isBoundedAbove; }
    Adesk::Boolean isBoundedBelow() const { return m_isBoundedBelow; }
    Adesk::Boolean isUnBounded() const { return !m_isBoundedBelow && !m_isBoundedAbove; }
    // Bounded, with the bounds not apart.
    Adesk::Boolean isSingleton() const;
    // No number is in both.
    Adesk::Boolean isDisjoint(const AcGeInterval& other) const;

    // Every number of the other is in this one.
    Adesk::Boolean contains(const AcGeInterval& other) const;
    // False for what is not a number.
    Adesk::Boolean contains(double value) const;

    // The same bounds are there, and equal.
    bool operator==(const AcGeInterval& other) const;
    bool operator!=(const AcGeInterval& other) const { return !(*this == other); }

private:
    double m_lower = 0.0;
    double m_upper = 0.0;
    double m_tolerance;
    bool m_isBoundedBelow = false;
    bool m_isBoundedAbove = false;
};
