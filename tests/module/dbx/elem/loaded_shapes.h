#pragma once

#include "dbx/elem/load_distribution_functions.h"
#include "module/dbx/elem/drawn_loads.h"

#include <array>
#include <memory>
#include <string>

// The members, distributions, signs and views that pictures of loads are made of.
namespace testing_support {

struct MemberShape {
    const char* name;
    void (*build)(LoadedMember&);
};
// Straight, round, and of three pieces; each from (0, 0, 0) on, in the plane of X and Z.
extern const std::array<MemberShape, 3> kMemberShapes;

struct LoadSign {
    const char* name;
    double first;
    double second;
};
extern const std::array<LoadSign, 3> kLoadSigns; // positive, negative, changing

// A distribution whose ends or peak are these two values.
struct LoadShape {
    using Values = std::function<double(double length, double distance)>;

    const char* name;
    bool changesSign; // where its two values have different ones
    Values (*of)(double first, double second);
};
enum LoadShapeIndex : std::size_t {
    kUniform,
    kLinear,
    kLinearMid,
    kQuadraticStart,
    kQuadraticEnd,
    kCubicStart,
    kCubicEnd,
    kQuadraticMid,
    kLoadShapeCount
};
extern const std::array<LoadShape, kLoadShapeCount> kLoadShapes;

struct NamedView {
    const char* name;
    embedded::ViewParameters (*make)();
};
extern const std::array<NamedView, 4> kNamedViews; // top, front, side, aslant

// Without logarithmic lengths of arrows.
std::unique_ptr<LoadedMember> onMember(const MemberShape& shape);
// So that there are that many spaces between the arrows.
void setSpaces(LoadedMember& loaded, int count);
void setLine(LoadedMember& loaded, LoadShapeIndex shape, const LoadSign& sign);

// The element's name, and the values of a line load at its first and its last vertex.
void setTextAtEnds(LoadedMember& loaded, const std::wstring& name, const LoadSign& sign);
// The prefix and a text of an area load at a point.
void setTextOfArea(LoadedMember& loaded, const AcGePoint3d& point);

// Areas in the plane of X and Y, with straight edges alone and with an arc.
void buildTriangle(LoadedMember& loaded);
void buildRoundedArea(LoadedMember& loaded);
// The values are the height of a slanted plane over that of the area: this high at the origin.
void setSlope(LoadedMember& loaded, double height, double slope);

// Puts the load on an element of a drawing of its own, with axes of its own: those of the world, rolled by 30
// degrees about X.
void putOnRolledElement(LoadedMember& loaded);

// A drawing, worked on while this lives, that has the line type of loads of the dashed kind.
class DashedDrawing {
public:
    DashedDrawing();
    ~DashedDrawing();
    DashedDrawing(const DashedDrawing&) = delete;
    DashedDrawing& operator=(const DashedDrawing&) = delete;

    AcDbObjectId lineType() const { return m_lineType; }

private:
    AcDbDatabase m_db;
    AcDbDatabase* const m_before;
    AcDbObjectId m_lineType;
};

} // namespace testing_support
