#include "module/dbx/elem/loaded_shapes.h"

#include "orvshape/acad_draw.h"
#include "support/test_element.h"

#include "dbapserv.h"
#include "dbsymtb.h"
#include "geplane.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace orv::elem;

namespace testing_support {

namespace {

using Values = LoadShape::Values;

void buildStraight(LoadedMember& loaded) { loaded.through({{0, 0, 0}, {8, 0, 0}}); }
void buildArc(LoadedMember& loaded) { loaded.arc({0, 0, 0}, {4, 0, 3}, {8, 0, 0}); }
void buildPolygon(LoadedMember& loaded) { loaded.through({{0, 0, 0}, {3, 0, 0}, {3, 0, 2}, {8, 0, 2}}); }

std::wstring shownValue(double value) {
    std::wostringstream text;
    text.precision(1);
    text << std::fixed << value << L" kN/m";
    return text.str();
}

} // namespace

const std::array<MemberShape, 3> kMemberShapes = {
    {{"straight", &buildStraight}, {"arc", &buildArc}, {"polygon", &buildPolygon}}};

const std::array<LoadSign, 3> kLoadSigns = {
    {{"positive", 1.0, 2.0}, {"negative", -1.0, -2.0}, {"changing", -1.0, 2.0}}};

const std::array<LoadShape, kLoadShapeCount> kLoadShapes = {{
    {"uniform", false,
     [](double a, double) -> Values {
         return [a](double, double) { return _getValueAtPos_uniform(a, AcGePoint3d::kOrigin); };
     }},
    {"linear", true,
     [](double a, double b) -> Values {
         return [a, b](double L, double d) { return _getValueAtDist_linear(L, a, b, d); };
     }},
    {"linear_mid", true,
     [](double a, double b) -> Values {
         return [a, b](double L, double d) { return _getValueAtDist_linearMid(L, a, b, d); };
     }},
    {"quadratic_start", false,
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_quadratic_P_at_start(L, b, d); };
     }},
    {"quadratic_end", false,
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_quadratic_P_at_end(L, b, d); };
     }},
    {"cubic_start", false,
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_cubic_P_at_start(L, b, d); };
     }},
    {"cubic_end", false,
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_cubic_P_at_end(L, b, d); };
     }},
    {"quadratic_mid", false,
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_quadratic_P_at_mid_inverse(L, b, d); };
     }},
}};

const std::array<NamedView, 4> kNamedViews = {
    {{"top", &fromTop}, {"front", &fromFront}, {"side", &fromSide}, {"aslant", &aslant}}};

std::unique_ptr<LoadedMember> onMember(const MemberShape& shape) {
    auto loaded = std::make_unique<LoadedMember>();
    loaded->system.visSettings().setSwitch(151, 0);
    shape.build(*loaded);
    return loaded;
}

void setSpaces(LoadedMember& loaded, int count) {
    // A little less than a whole part, so that rounding takes none away.
    loaded.system.visSettings().setSize(3, loaded.member.getLength() / (count + 0.01));
}

void setLine(LoadedMember& loaded, LoadShapeIndex shape, const LoadSign& sign) {
    loaded.values(kLoadShapes[shape].of(sign.first, sign.second));
}

void setTextAtEnds(LoadedMember& loaded, const std::wstring& name, const LoadSign& sign) {
    if (!name.empty())
        loaded.member.setProperties().add(30001U, name);
    const unsigned int last = loaded->numVertices() - 1;
    loaded->setTextAt(0, shownValue(sign.first));
    loaded->setTextAt(static_cast<int>(last), shownValue(sign.second));
    const double length = loaded.member.getLength();
    loaded->drawTexts = [&loaded, last, length](orv::AcadViewportDraw& vd, orv::System& system) {
        loaded->_draw_lineload_text_at(vd, system, 0.0, 0);
        loaded->_draw_lineload_text_at(vd, system, length, last);
    };
}

void setTextOfArea(LoadedMember& loaded, const AcGePoint3d& point) {
    loaded->setTextAt(0, L"q");
    loaded->drawTexts = [&loaded, point](orv::AcadViewportDraw& vd, orv::System& system) {
        loaded->_draw_areaload_text_at(vd, system, point, 0, L"Roof ");
    };
}

void buildTriangle(LoadedMember& loaded) {
    loaded.member.clear();
    loaded.through({{0, 0, 0}, {6, 0, 0}, {0, 4, 0}, {0, 0, 0}});
}

void buildRoundedArea(LoadedMember& loaded) {
    loaded.member.clear();
    loaded.through({{0, 0, 0}, {6, 0, 0}});
    EXPECT_EQ(loaded.member.appendArcThrough({8, 2, 0}, {6, 4, 0}), Acad::eOk);
    EXPECT_EQ(loaded.member.appendLineTo({0, 4, 0}), Acad::eOk);
    EXPECT_EQ(loaded.member.appendClosingLine(), Acad::eOk);
}

void setSlope(LoadedMember& loaded, double height, double slope) {
    loaded.ofArea(height);
    loaded->setup = [height, slope](orv::System&, DrawnLoad::Picture& picture) {
        const AcGePlane geometry(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
        const AcGePlane values(AcGePoint3d(0, 0, height), AcGeVector3d(-slope, 0, 1));
        picture.getValueAtPosFn = [geometry, values](const AcGePoint3d& point) {
            return _getValueAtPos_planar(geometry, values, point);
        };
    };
}

void putOnRolledElement(LoadedMember& loaded) {
    registerTestElement();
    loaded.drawing = std::make_unique<AcDbDatabase>(true);
    auto* const element = new TestElement;
    auto* const general = new TurnedGeneral;
    general->matrix = AcGeMatrix3d::rotation(3.14159265358979323846 / 6.0, AcGeVector3d::kXAxis);
    element->addPlugin(general);
    loaded->setElement(putEntity(*loaded.drawing, element));
}

DashedDrawing::DashedDrawing() : m_db(true), m_before(acdbHostApplicationServices()->workingDatabase()) {
    acdbHostApplicationServices()->setWorkingDatabase(&m_db);
    AcDbLinetypeTable* table = nullptr;
    EXPECT_EQ(acdbOpenObject(table, m_db.linetypeTableId(), AcDb::kForWrite), Acad::eOk);
    auto* const record = new AcDbLinetypeTableRecord;
    EXPECT_EQ(record->setName(L"STRICHLINIE"), Acad::eOk);
    EXPECT_EQ(table->add(m_lineType, record), Acad::eOk);
    record->close();
    table->close();
}

DashedDrawing::~DashedDrawing() { acdbHostApplicationServices()->setWorkingDatabase(m_before); }

} // namespace testing_support
