#include "cli/arx/system_box.h"

#include "cli/common/failure.h"

#include <cmath>
#include <limits>

namespace taldork::cli {

namespace {

AcGePoint3d pointOf(const Point& point) { return {point[0], point[1], point[2]}; }

/// As it is after its way through a record.
AcGePoint3d narrowed(const AcGePoint3d& point) {
    return {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)};
}

bool same(const AcGePoint3d& left, const AcGePoint3d& right) {
    return left.x == right.x && left.y == right.y && left.z == right.z;
}

bool fitsFloat(const AcGePoint3d& point) {
    for (const double value : {point.x, point.y, point.z})
        if (!(std::abs(value) <= std::numeric_limits<float>::max()))
            return false;
    return true;
}

} // namespace

std::optional<SystemBox> parseBox(const std::string& text) {
    const auto n = parseNumbers(text, 6);
    if (!n)
        return std::nullopt;
    const SystemBox box{{(*n)[0], (*n)[1], (*n)[2]}, {(*n)[3], (*n)[4], (*n)[5]}};
    for (int axis = 0; axis < 3; ++axis)
        if (box.min[axis] > box.max[axis])
            return std::nullopt;
    return box;
}

std::string checkBox(const std::string& text) {
    return parseBox(text) ? ""
                          : "'" + text +
                                "' is no box: write X,Y,Z,X,Y,Z with the lower corner first, as in "
                                "0,0,0,20,20,5";
}

void setBox(orv::System& system, const SystemBox& box, const std::string& path) {
    const AcGePoint3d min = system.converter().toCdb(pointOf(box.min));
    const AcGePoint3d max = system.converter().toCdb(pointOf(box.max));
    if (!fitsFloat(min) || !fitsFloat(max))
        throw Failure(path, "the box does not fit the numbers of the record 10/0");
    system.set_sys_box(pointOf(box.min), pointOf(box.max));
    AcGePoint3d setMin, setMax;
    system.getExtents(setMin, setMax);
    if (!same(setMin, narrowed(min)) || !same(setMax, narrowed(max)))
        throw Failure(path, "the record 10/0 is too short to hold a box");
}

} // namespace taldork::cli
