#include "module/dbx/elem/load_plugins.h"

#include "embedded/display_list.h"
#include "support/system_store.h"

namespace testing_support {

namespace {

class Pencil : public AcDbEntity {
public:
    std::function<void(orv::AcadWorldDraw&, orv::System&)> draw;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        orv::AcadWorldDraw wd(*worldDraw);
        draw(wd, m_system);
        return true;
    }

private:
    FilledSystem m_system;
};

} // namespace

boost::shared_ptr<ORV_SegmentedCurve> shortCurve() {
    auto curve = boost::make_shared<ORV_SegmentedCurve>();
    orv::CurveSegment segment;
    EXPECT_TRUE(orv::CurveSegment::line({0, 0, 0}, {2, 0, 0}, segment));
    EXPECT_EQ(curve->append(segment), Acad::eOk);
    return curve;
}

void drawWith(const std::function<void(orv::AcadWorldDraw&, orv::System&)>& draw) {
    Pencil pencil;
    pencil.draw = draw;
    EXPECT_TRUE(embedded::draw(pencil).failures.empty());
}

} // namespace testing_support
