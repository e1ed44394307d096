#include "base/assert.h"
#include "property_tree/arx/property_tree_filer.h"

#include "dbid.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

namespace orv::property_tree {

namespace {

// Both values, if they are of this type.
template <class T>
struct Pair {
    Pair(const boost::any& left, const boost::any& right)
        : a(boost::any_cast<T>(&left)), b(boost::any_cast<T>(&right)) {}
    explicit operator bool() const { return a != nullptr && b != nullptr; }

    const T* a;
    const T* b;
};

} // namespace

bool is_equal(const boost::any& a, const boost::any& b) {
    if (a.type() != b.type())
        return false;
    if (const Pair<bool> both{a, b})
        return *both.a == *both.b;
    if (const Pair<int> both{a, b})
        return *both.a == *both.b;
    if (const Pair<double> both{a, b})
        return *both.a == *both.b;
    if (const Pair<AcDbObjectId> both{a, b})
        return c5ObjIdIsEqualTo(*both.a, *both.b);
    if (const Pair<AcDbSoftPointerId> both{a, b})
        return c5ObjIdIsEqualTo(*both.a, *both.b);
    if (const Pair<AcGeMatrix3d> both{a, b})
        return both.a->isEqualTo(*both.b, AcGeContext::gTol);
    if (const Pair<AcGePoint3d> both{a, b})
        return both.a->isEqualTo(*both.b, AcGeContext::gTol);
    if (const Pair<AcGeVector3d> both{a, b})
        return both.a->isEqualTo(*both.b, AcGeContext::gTol);
    ORV_ASSERT(false).error("orv::property_tree::is_equal(): unknown type");
    return false;
}

bool is_less(const boost::any& a, const boost::any& b) {
    if (a.type() != b.type())
        return false;
    if (const Pair<bool> both{a, b})
        return *both.a < *both.b;
    if (const Pair<int> both{a, b})
        return *both.a < *both.b;
    if (const Pair<double> both{a, b})
        return *both.a < *both.b;
    if (const Pair<AcDbObjectId> both{a, b})
        return c5ObjIdIsLessThan(*both.a, *both.b);
    if (const Pair<AcDbSoftPointerId> both{a, b})
        return c5ObjIdIsLessThan(*both.a, *both.b);
    ORV_ASSERT(false).error("orv::property_tree::is_less(): This type is not supported!");
    return false;
}

} // namespace orv::property_tree
