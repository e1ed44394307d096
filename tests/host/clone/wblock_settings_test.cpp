#include "clone_fixture.h"

#include "db/database_core.h"
#include "db/drawing_settings.h"
#include "dwg/file_frame.h"
#include "embedded/user_coordinate_system.h"

namespace {

// The settings that a drawing made of another one begins with.
class WblockSettings : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        m_layer = layer(*m_from, L"CURRENT", 3);
        m_entity = entity(modelSpace(*m_from), L"A");
        change<CloneEntity>(m_entity, [&](CloneEntity& e) { e.setLayer(m_layer); });
        m_from->core().roots.currentLayer = m_layer;
        ASSERT_EQ(
            embedded::setUserCoordinateSystem(*m_from, {1, 2, 3}, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis),
            Acad::eOk);
        m_from->core().frame = std::make_unique<embedded::dwg::FileFrame>();
        embedded::dwg::HeaderVariables& variables = variablesOf(*m_from);
        variables.setNumber("LUNITS", 4);
        variables.setReal("LTSCALE", 2.5);
        variables.setNumber("CECOLOR", 3);
        variables.setTriple("LIMMAX", {42, 30, 0});
        variables.setTriple("INSBASE", {7, 8, 9});
        variables.setTriple("EXTMIN", {-1, -1, -1});
    }
    static embedded::dwg::HeaderVariables& variablesOf(AcDbDatabase& database) {
        return static_cast<embedded::dwg::FileFrame&>(*database.core().frame).variables;
    }
    static void expectModes(AcDbDatabase& database) {
        const embedded::dwg::HeaderVariables& variables = variablesOf(database);
        EXPECT_EQ(variables.number("LUNITS"), 4u);
        EXPECT_EQ(variables.real("LTSCALE"), 2.5);
        EXPECT_EQ(variables.number("CECOLOR"), 3u);
        EXPECT_EQ(variables.triple("LIMMAX").x, 42);
    }
    // The drawing that it is after a save.
    std::unique_ptr<AcDbDatabase> read(AcDbDatabase& database) {
        std::string error;
        EXPECT_TRUE(embedded::saveDocument(database, m_folder.file(L"a.dwg"), error)) << error;
        auto again = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(again->readDwgFile(m_folder.file(L"a.dwg").c_str()), Acad::eOk);
        return again;
    }

    CloneFolder m_folder;
    AcDbObjectId m_layer, m_entity;
};

TEST_F(WblockSettings, OfAWholeDrawingAreAllOfIts) {
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> out(made);
    const std::unique_ptr<AcDbDatabase> again = read(*out);
    for (AcDbDatabase* database : {out.get(), again.get()}) {
        expectModes(*database);
        EXPECT_EQ(variablesOf(*database).triple("EXTMIN").x, -1);
        EXPECT_EQ(embedded::basePointOf(database->core()), AcGePoint3d(7, 8, 9));
        EXPECT_EQ(database->ucsorg(), AcGePoint3d(1, 2, 3));
        EXPECT_EQ(database->ucsxdir(), AcGeVector3d::kYAxis);
        EXPECT_EQ(database->clayer(), record(database->layerTableId(), L"CURRENT"));
    }
}

TEST_F(WblockSettings, OfChosenObjectsAreItsModesButNotItsPlaces) {
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made, ids({m_entity}), AcGePoint3d(1, 1, 1)), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> out(made);
    const std::unique_ptr<AcDbDatabase> again = read(*out);
    for (AcDbDatabase* database : {out.get(), again.get()}) {
        expectModes(*database);
        EXPECT_EQ(variablesOf(*database).triple("EXTMIN").x, 1e20);
        EXPECT_EQ(embedded::basePointOf(database->core()), AcGePoint3d());
        EXPECT_EQ(database->ucsorg(), AcGePoint3d());
        EXPECT_EQ(database->ucsxdir(), AcGeVector3d::kXAxis);
        EXPECT_EQ(database->clayer(), record(database->layerTableId(), L"CURRENT"));
    }
}

TEST_F(WblockSettings, ACurrentLayerThatStaysBehindLeavesLayerZero) {
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    change<CloneEntity>(b, [&](CloneEntity& e) { e.setLayer(m_from->layerZero()); });
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made, ids({b}), AcGePoint3d()), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> out(made);
    EXPECT_EQ(out->clayer(), out->layerZero());
}

TEST_F(WblockSettings, OfANewDrawingAreThoseOfANewOne) {
    m_from->core().frame.reset();
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made, ids({m_entity}), AcGePoint3d()), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> out(made);
    EXPECT_EQ(embedded::basePointOf(out->core()), AcGePoint3d());
    const std::unique_ptr<AcDbDatabase> again = read(*out);
    EXPECT_EQ(variablesOf(*again).real("LTSCALE"), 1.0);
}

TEST_F(WblockSettings, TheBasePointIsTheOriginOfABlockThatADrawingBecomes) {
    AcDbObjectId id;
    ASSERT_EQ(m_to->insert(id, L"PART", m_from.get()), Acad::eOk);
    auto* block = open<AcDbBlockTableRecord>(id);
    EXPECT_EQ(block->origin(), AcGePoint3d(7, 8, 9));
    block->close();
}

} // namespace
