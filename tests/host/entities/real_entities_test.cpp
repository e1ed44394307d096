#include "dbelipse.h"
#include "dbhatch.h"
#include "dbidmap.h"
#include "dbmtext.h"
#include "dbspline.h"
#include "embedded/display_list.h"
#include "entities/solid.h"
#include "entity_fixture.h"
#include "rxclass.h"

#include <nlohmann/json.hpp>

#include <map>

using nlohmann::json;

namespace {

// The kinds of entity that the host has code for, and their classes.
std::map<std::wstring, AcRxClass*> liveKinds() {
    return {{L"LINE", AcDbLine::desc()},
            {L"ARC", AcDbArc::desc()},
            {L"CIRCLE", AcDbCircle::desc()},
            {L"POINT", AcDbPoint::desc()},
            {L"TEXT", AcDbText::desc()},
            {L"LWPOLYLINE", AcDbPolyline::desc()},
            {L"INSERT", AcDbBlockReference::desc()},
            {L"ATTRIB", AcDbAttribute::desc()},
            {L"SEQEND", AcDbSequenceEnd::desc()},
            {L"MINSERT", AcDbMInsertBlock::desc()},
            {L"VERTEX_2D", AcDb2dVertex::desc()},
            {L"VERTEX_3D", AcDb3dPolylineVertex::desc()},
            {L"POLYLINE_2D", AcDb2dPolyline::desc()},
            {L"POLYLINE_3D", AcDb3dPolyline::desc()},
            {L"HATCH", AcDbHatch::desc()},
            {L"MTEXT", AcDbMText::desc()},
            {L"ELLIPSE", AcDbEllipse::desc()},
            {L"SOLID", AcDbSolid::desc()},
            {L"SPLINE", AcDbSpline::desc()}};
}

class RealEntities : public FolderFixture, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        m_original = drawingFile(std::string(GetParam()) + "_AC1015.dwg");
        if (!std::filesystem::exists(m_original))
            GTEST_SKIP() << "no " << m_original;
        m_database = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(m_database->readDwgFile(platform::fromUtf8(m_original).c_str()), Acad::eOk)
            << embedded::lastFileError();
    }

    json content() const {
        std::ifstream in(drawingFile(std::string(GetParam()) + "_AC1015.content.json"));
        return json::parse(in);
    }

    std::map<std::uint64_t, std::string> saved() {
        EXPECT_EQ(m_database->saveAs(path(L"saved.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
        return objectsOf(bytesOfFile(narrowPath(L"saved.dwg")));
    }

    std::vector<AcDbObjectId> idsOf(const std::map<std::wstring, AcRxClass*>& kinds) const {
        std::vector<AcDbObjectId> ids;
        embedded::forEachObject(*m_database, [&](AcDbObjectId id) {
            if (kinds.count(embedded::kindOf(id)) != 0)
                ids.push_back(id);
        });
        return ids;
    }

    std::string m_original;
    std::unique_ptr<AcDbDatabase> m_database;
};

} // namespace

TEST_P(RealEntities, EachIsOfItsOwnClassAndNoProxy) {
    const auto kinds = liveKinds();
    for (const AcDbObjectId& id : idsOf(kinds)) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk) << embedded::lastFileError();
        EXPECT_EQ(object->isA(), kinds.at(embedded::kindOf(id)))
            << std::hex << static_cast<Adesk::UInt64>(id.handle()) << " "
            << platform::toUtf8(embedded::kindOf(id));
        object->close();
    }
}

TEST_P(RealEntities, FiledAnewEachHasTheBytesThatItHad) {
    const auto before = objectsOf(bytesOfFile(m_original));
    const std::vector<AcDbObjectId> ids = idsOf(liveKinds());
    for (const AcDbObjectId& id : ids) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite), Acad::eOk) << embedded::lastFileError();
        object->assertWriteEnabled(false);
        object->close();
    }
    const auto after = saved();
    for (const AcDbObjectId& id : ids) {
        const auto handle = static_cast<Adesk::UInt64>(id.handle());
        EXPECT_TRUE(after.at(handle) == before.at(handle))
            << std::hex << handle << " " << platform::toUtf8(embedded::kindOf(id));
    }
    EXPECT_TRUE(after == before);
}

TEST_P(RealEntities, ThroughTheMemoryFilerEachKeepsItsBytes) {
    const auto before = objectsOf(bytesOfFile(m_original));
    embedded::beginCommand(*m_database);
    const std::vector<AcDbObjectId> ids = idsOf(liveKinds());
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(entity->setColorIndex(9), Acad::eOk);
        EXPECT_EQ(entity->transformBy(AcGeMatrix3d::translation({1.0, 2.0, 3.0})), Acad::eOk)
            << platform::toUtf8(embedded::kindOf(id));
        entity->close();
    }
    ASSERT_FALSE(ids.empty());
    ASSERT_TRUE(embedded::undo(*m_database));
    const auto after = saved();
    for (const AcDbObjectId& id : ids) {
        const auto handle = static_cast<Adesk::UInt64>(id.handle());
        EXPECT_TRUE(after.at(handle) == before.at(handle))
            << std::hex << handle << " " << platform::toUtf8(embedded::kindOf(id));
    }
}

TEST_P(RealEntities, LinesRunWhereAnIndependentReaderFoundThem) {
    const json theirs = content();
    for (const json& told : theirs["lines"]) {
        AcDbObjectId id;
        const std::uint64_t handle = std::stoull(told["handle"].get<std::string>(), nullptr, 16);
        ASSERT_EQ(m_database->getAcDbObjectId(id, false, AcDbHandle(static_cast<Adesk::UInt64>(handle))),
                  Acad::eOk);
        AcDbLine* line = nullptr;
        ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
        const auto point = [&](const char* end) {
            return AcGePoint3d(told[end][0].get<double>(), told[end][1].get<double>(),
                               told[end][2].get<double>());
        };
        const AcGePoint3d start = point("start"), end = point("end");
        expectNear(line->startPoint(), start);
        expectNear(line->endPoint(), end);
        AcDbExtents box;
        box.addPoint(start);
        box.addPoint(end);
        expectBox(extentsOf(*line), box.minPoint(), box.maxPoint());
        line->close();
    }
}

TEST_P(RealEntities, EachOfModelSpaceHasExtents) {
    const auto kinds = liveKinds();
    for (const AcDbObjectId& id : idsOf(kinds)) {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForRead), Acad::eOk);
        AcDbExtents box;
        const bool drawn =
            !entity->isKindOf(AcDbSequenceEnd::desc()) && !entity->isKindOf(AcDbBlockReference::desc());
        EXPECT_TRUE(!drawn || entity->getGeomExtents(box) == Acad::eOk)
            << platform::toUtf8(embedded::kindOf(id));
        entity->close();
    }
}

TEST_P(RealEntities, IsDrawnWithoutFailuresAndWithoutAChange) {
    const auto before = objectsOf(bytesOfFile(m_original));
    const embedded::DisplayList list = embedded::draw(*m_database);
    EXPECT_TRUE(list.failures.empty());
    EXPECT_FALSE(list.primitives.empty());
    for (const embedded::Primitive& primitive : list.primitives) {
        EXPECT_FALSE(primitive.owner.isNull());
        EXPECT_FALSE(primitive.traits.layer.isNull());
        for (const AcGePoint3d& point : primitive.points)
            EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z));
    }
    // What a line draws is the line.
    const json theirs = content();
    for (const json& told : theirs["lines"]) {
        const std::uint64_t handle = std::stoull(told["handle"].get<std::string>(), nullptr, 16);
        for (const embedded::Primitive& primitive : list.primitives)
            if (static_cast<Adesk::UInt64>(primitive.owner.handle()) == handle &&
                primitive.outermost == primitive.owner) {
                EXPECT_NEAR(primitive.points[0].x, told["start"][0].get<double>(), 1.0e-9);
            }
    }
    EXPECT_TRUE(saved() == before);
}

TEST_P(RealEntities, ErasingAReferenceTakesItsAttributesOutOfTheFile) {
    std::vector<std::uint64_t> gone;
    for (const AcDbObjectId& id : idsOf({{L"INSERT", nullptr}})) {
        AcDbBlockReference* reference = nullptr;
        ASSERT_EQ(acdbOpenObject(reference, id, AcDb::kForWrite), Acad::eOk);
        const std::unique_ptr<AcDbObjectIterator> it(reference->attributeIterator());
        if (!it->done()) {
            for (; !it->done(); it->step())
                gone.push_back(static_cast<Adesk::UInt64>(it->objectId().handle()));
            gone.push_back(static_cast<Adesk::UInt64>(id.handle()));
            EXPECT_EQ(reference->erase(), Acad::eOk);
        }
        reference->close();
    }
    const auto after = saved();
    for (const std::uint64_t handle : gone)
        EXPECT_EQ(after.count(handle), 0u) << std::hex << handle;
    EXPECT_EQ(gone.empty(), std::string(GetParam()) != "sample");
    AcDbDatabase again(false);
    EXPECT_EQ(again.readDwgFile(path(L"saved.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
}

TEST_P(RealEntities, PolylinesGoIntoAnotherDrawingWithTheirVertices) {
    std::size_t count = 0;
    for (const AcDbObjectId& id : idsOf({{L"POLYLINE_3D", nullptr}, {L"POLYLINE_2D", nullptr}})) {
        AcDbDatabase target(true);
        AcDbIdMapping mapping;
        AcDbObjectIdArray ids;
        ids.append(id);
        ASSERT_EQ(
            m_database->wblockCloneObjects(ids, target.core().roots.modelSpace, mapping, AcDb::kDrcIgnore),
            Acad::eOk);
        AcDbIdPair pair(id, AcDbObjectId(), true);
        ASSERT_TRUE(mapping.compute(pair));
        ASSERT_EQ(target.saveAs(path(L"target.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
        AcDbDatabase again(false);
        ASSERT_EQ(again.readDwgFile(path(L"target.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
        AcDbObjectId copy;
        ASSERT_EQ(again.getAcDbObjectId(copy, false, pair.value().handle()), Acad::eOk);
        AcGePoint3dArray grips[2];
        AcDbIntArray modes, numbers;
        for (int i = 0; i < 2; ++i) {
            AcDbEntity* entity = nullptr;
            ASSERT_EQ(acdbOpenAcDbEntity(entity, i == 0 ? id : copy, AcDb::kForRead), Acad::eOk);
            EXPECT_EQ(entity->getGripPoints(grips[i], modes, numbers), Acad::eOk);
            entity->close();
        }
        ASSERT_EQ(grips[0].length(), grips[1].length());
        EXPECT_GE(grips[0].length(), 2);
        for (int i = 0; i < grips[0].length(); ++i)
            expectNear(grips[1][i], grips[0][i], 0.0);
        ++count;
    }
    EXPECT_EQ(count != 0, std::string(GetParam()) == "sample");
}

INSTANTIATE_TEST_SUITE_P(Drawings, RealEntities, testing::Values("small", "leader", "sample"));
