#include "orvshape/save_entity_traits.h"

#include "curve_fixture.h"
#include "embedded/display_list.h"
#include "host/gi/sketch.h"

namespace {

void changeAll(AcGiSubEntityTraits& traits, const AcDbDatabase& database) {
    traits.setColor(1);
    traits.setLayer(AcDbObjectId());
    traits.setLineType(database.continuousLinetype());
    traits.setFillType(kAcGiFillAlways);
    traits.setLineWeight(AcDb::kLnWt100);
    traits.setLineTypeScale(9.0);
    traits.setThickness(8.0);
}

class SavedTraits : public CurveDrawing {
protected:
    // What is drawn with after a scope in which everything was changed.
    embedded::DrawTraits after(const std::function<void(AcGiSubEntityTraits&)>& before) {
        Sketch sketch;
        sketch.world = [&](AcGiWorldDraw& draw) {
            before(draw.subEntityTraits());
            {
                const orv::SaveEntityTraits saved(draw.subEntityTraits());
                changeAll(draw.subEntityTraits(), *m_database);
                draw.geometry().circle(AcGePoint3d(), 1.0, AcGeVector3d::kZAxis);
            }
            draw.geometry().circle(AcGePoint3d(), 2.0, AcGeVector3d::kZAxis);
            return true;
        };
        const embedded::DisplayList list = embedded::draw(sketch);
        EXPECT_EQ(list.primitives.size(), 2u);
        EXPECT_EQ(list.primitives[0].traits.colour, 1);
        EXPECT_EQ(list.primitives[0].traits.thickness, 8.0);
        return list.primitives[1].traits;
    }
};

} // namespace

TEST_F(SavedTraits, ComeBackAtTheEndOfTheScope) {
    const embedded::DrawTraits traits = after([&](AcGiSubEntityTraits& set) {
        set.setColor(5);
        set.setLayer(m_database->layerZero());
        set.setLineType(m_database->byBlockLinetype());
        set.setFillType(kAcGiFillNever);
        set.setLineWeight(AcDb::kLnWt013);
        set.setLineTypeScale(0.5);
        set.setThickness(0.25);
    });
    EXPECT_EQ(traits.colour, 5);
    EXPECT_FALSE(traits.trueColour.isByColor());
    EXPECT_EQ(traits.layer, m_database->layerZero());
    EXPECT_EQ(traits.lineType, m_database->byBlockLinetype());
    EXPECT_EQ(traits.fill, kAcGiFillNever);
    EXPECT_EQ(traits.lineWeight, AcDb::kLnWt013);
    EXPECT_EQ(traits.lineTypeScale, 0.5);
    EXPECT_EQ(traits.thickness, 0.25);
}

TEST_F(SavedTraits, TrueColourComesBackWithTheIndexBelowIt) {
    const embedded::DrawTraits traits = after([](AcGiSubEntityTraits& set) {
        set.setColor(6);
        set.setTrueColor(AcCmEntityColor(10, 20, 30));
    });
    EXPECT_EQ(traits.trueColour, AcCmEntityColor(10, 20, 30));
    EXPECT_EQ(traits.colour, 6);
}

TEST_F(SavedTraits, AnIndexComesBackFromUnderATrueColour) {
    Sketch sketch;
    sketch.world = [](AcGiWorldDraw& draw) {
        draw.subEntityTraits().setColor(5);
        {
            const orv::SaveEntityTraits saved(draw.subEntityTraits());
            draw.subEntityTraits().setTrueColor(AcCmEntityColor(10, 20, 30));
            draw.geometry().circle(AcGePoint3d(), 1.0, AcGeVector3d::kZAxis);
        }
        draw.geometry().circle(AcGePoint3d(), 2.0, AcGeVector3d::kZAxis);
        return true;
    };
    const embedded::DisplayList list = embedded::draw(sketch);
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(list.primitives[0].traits.trueColour, AcCmEntityColor(10, 20, 30));
    EXPECT_EQ(list.primitives[1].traits.colour, 5);
    EXPECT_FALSE(list.primitives[1].traits.trueColour.isByColor());
}
