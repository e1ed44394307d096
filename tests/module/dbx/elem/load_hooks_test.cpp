// The hooks by which loads of all three bases are drawn and erased, and where they stand.

#include "base/key_value_storage.h"
#include "dbx/binary_out_archive.h"
#include "module/dbx/elem/drawn_loads.h"
#include "module/dbx/elem/load_drawing.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "orvshape/acad_draw.h"
#include "support/archive_bytes.h"
#include "support/display_list_text.h"
#include "support/slots.h"

#include <gtest/gtest.h>

using namespace testing_support;
using orv::elem::kLineLoad;
using orv::elem::kPointLoad;
using orv::elem::detail::LoadVisualizationData;

namespace {

const AcCmEntityColor kRed(229, 0, 0);
const AcCmEntityColor kGreen(27, 186, 0);

// A load that gives its values; the notes of the hooks are not of interest here.
template <class Base>
struct Uniform : Base {
    void setupInterpolationData(orv::System&, LoadVisualizationData& picture) override {
        picture.getValueAtDistFn = [](double) { return 2.0; };
    }
};

template <class Load>
embedded::DisplayList drawOnMember(const std::function<void(Load&)>& prepare) {
    LoadedMember loaded;
    loaded.system.visSettings().setSwitch(151, 0);
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    loaded->setDistribution(orv::elem::kVolumeLoad); // draws nothing
    const auto load = boost::make_shared<Load>();
    loaded.member.addPlugin(load);
    prepare(*load);
    return loaded.draw();
}

template <class Load>
class EveryLoad : public LoadsInDrawing {};
using AllBases = testing::Types<PlainLoad, FreeLoad, BeamLoad>;
TYPED_TEST_SUITE(EveryLoad, AllBases);

} // namespace

TYPED_TEST(EveryLoad, ALineLoadIsDrawnAsThatOfAnyBase) {
    const auto prepare = [](auto& load) {
        load.setDistribution(kLineLoad);
        load.setVertices(verticesOf(2));
    };
    const auto list = drawOnMember<Uniform<TypeParam>>(prepare);
    EXPECT_EQ(worldPart(list).size(), 5U + 4U);
    EXPECT_EQ(viewPart(list).size(), 5U);
    EXPECT_EQ(displayListText(list), displayListText(drawOnMember<Uniform<PlainLoad>>(prepare)));
}

TYPED_TEST(EveryLoad, APointLoadIsDrawnAsThatOfAnyBase) {
    const auto list = drawOnMember<TypeParam>([](TypeParam& load) {
        load.setDistribution(kPointLoad);
        load.setVertices(vertexAt({1, 2, 3}, 25.0, L"q"));
    });
    ASSERT_EQ(worldPart(list).size(), 1U);
    EXPECT_TRUE(worldPart(list)[0].points.at(1).isEqualTo(AcGePoint3d(1, 2, 8)));
    ASSERT_EQ(viewPart(list).size(), 2U);
    EXPECT_EQ(viewPart(list)[1].text, L"q");
}

// Neither stems nor heads of a line load show it: thermal ones have no heads.
TYPED_TEST(EveryLoad, AThermalPointLoadIsGreenInBothDrawings) {
    for (const int type : {10, 53}) {
        const auto list = drawOnMember<TypeParam>([this, type](TypeParam& load) {
            load.setDistribution(kPointLoad);
            load.setType(type);
            static_cast<orv::elem::GenericLoad&>(load).setElement(this->db.layerZero());
            load.setVertices(vertexAt({1, 2, 3}, 0.05, L"q"));
        });
        ASSERT_EQ(worldPart(list).size(), 1U);
        ASSERT_EQ(viewPart(list).size(), 2U);
        for (const auto& primitive : list.primitives)
            EXPECT_EQ(primitive.traits.trueColour, type == 53 ? kGreen : kRed);
    }
}

#ifndef _MSC_VER

namespace {

// Calls hooks of a load through their places.
class SlotPencil : public AcDbEntity {
public:
    explicit SlotPencil(void* load) : m_load(load) {}

    bool callsColours = true;
    bool callsDrawing = true;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* host) override {
        using Before = void (*)(void*, const AcDbEntity&, AcGiWorldDraw&);
        using Draw = void (*)(void*, orv::AcadWorldDraw&, orv::System&);
        orv::AcadWorldDraw draw(*host);
        if (callsColours)
            slotOf<Before>(m_load, 9)(m_load, *this, *host);
        if (callsDrawing)
            slotOf<Draw>(m_load, 10)(m_load, draw, m_system);
        else
            draw.line({0, 0, 0}, {1, 0, 0});
        return false;
    }
    void subViewportDraw(AcGiViewportDraw* host) override {
        using Before = void (*)(void*, const AcDbEntity&, AcGiViewportDraw&);
        using Draw = void (*)(void*, orv::AcadViewportDraw&, orv::System&);
        orv::AcadViewportDraw draw(*host);
        if (callsColours)
            slotOf<Before>(m_load, 11)(m_load, *this, *host);
        if (callsDrawing)
            slotOf<Draw>(m_load, 12)(m_load, draw, m_system);
        else
            draw.line({0, 0, 0}, {1, 0, 0});
    }

private:
    void* const m_load;
    FilledSystem m_system;
};

template <class Load>
struct Extended : Load {
    virtual int next() { return 77; }
};

} // namespace

TYPED_TEST(EveryLoad, TheDrawingHooksStandWhereThoseOfAPluginDo) {
    TestElement element;
    auto* const load = new TypeParam;
    element.addPlugin(load);
    load->setVertices(vertexAt({1, 2, 3}, 25.0));
    SlotPencil pencil(load);
    auto list = embedded::draw(pencil);
    ASSERT_EQ(worldPart(list).size(), 1U);
    ASSERT_EQ(viewPart(list).size(), 1U);
    for (const auto& primitive : list.primitives)
        EXPECT_EQ(primitive.traits.trueColour, kRed);

    pencil.callsColours = false;
    list = embedded::draw(pencil);
    ASSERT_EQ(list.primitives.size(), 2U);
    for (const auto& primitive : list.primitives)
        EXPECT_FALSE(primitive.traits.trueColour.isByColor());

    pencil.callsColours = true;
    pencil.callsDrawing = false;
    load->setType(53);
    list = embedded::draw(pencil);
    ASSERT_EQ(list.primitives.size(), 2U);
    for (const auto& primitive : list.primitives)
        EXPECT_EQ(primitive.traits.trueColour, kGreen);
}

TYPED_TEST(EveryLoad, TheEraseHookStandsWhereThatOfAPluginDoes) {
    const AcDbObjectId beam = this->beam();
    const AcDbObjectId id = this->template loadOn<TypeParam>(beam);
    ASSERT_EQ(this->connected(beam).size(), 1U);
    const auto callSlot = [&](bool erasing) {
        this->change(id, [erasing](TestElement& element) {
            auto& load = LoadsInDrawing::loadOf(element);
            slotOf<void (*)(void*, bool)>(&load, 13)(&load, erasing);
        });
    };
    callSlot(false);
    EXPECT_EQ(this->connected(beam).size(), 1U);
    callSlot(true);
    EXPECT_TRUE(this->connected(beam).empty());
}

// Behind the last operation of every load comes that of whoever derives, whichever the base is.
TYPED_TEST(EveryLoad, NoBaseHasMoreOperationsThanTheOthers) {
    Extended<TypeParam> load;
    EXPECT_EQ(slotOf<int (*)(void*)>(&load, 31)(&load), 77);
}

TYPED_TEST(EveryLoad, TheOperationsOfEveryLoadStandBehindThoseOfAPlugin) {
    TypeParam load;
    FilledSystem system;
    LoadVisualizationData picture;
    slotOf<void (*)(void*)>(&load, 24)(&load);
    slotOf<void (*)(void*)>(&load, 25)(&load);
    using Setup = void (*)(void*, orv::System&, LoadVisualizationData&);
    slotOf<Setup>(&load, 26)(&load, system, picture);
    for (const int slot : {28, 29, 30})
        slotOf<void (*)(void*)>(&load, slot)(&load);
    EXPECT_EQ(load.hooks, (Texts{"onEdited", "onGeometryModified", "setupInterpolationData",
                                 "onValuesChanged", "onElementChanged", "onLoadTypeChanged"}));
}

TEST(LoadHookPlaces, FilingOfAFreeLoadAndOfAnElementLoadStandsWhereThatOfAPluginDoes) {
    FreeLoad free;
    BeamLoad onBeam;
    using Save = bool (*)(const void*, orv::serialization::IOutArchive&);
    using Load = bool (*)(void*, orv::serialization::IInArchive&, unsigned int);
    const auto bytesOf = [](const void* load) {
        orv::serialization::BinaryOutArchive archive;
        EXPECT_TRUE(slotOf<Save>(load, 20)(load, archive));
        return hexOf(archive);
    };
    const std::string plain = bytesOf(std::make_unique<PlainLoad>().get());
    // A free load has its own version in front and more behind; an element's load has more behind.
    EXPECT_EQ(bytesOf(&free).substr(0, 12 + plain.size()), "04 00 00 00 " + plain);
    EXPECT_EQ(bytesOf(&onBeam), plain + " 02 00 00 00 c1 a7 a7 81");

    FreeLoad filled;
    filled.setDepth(4.5);
    filled.setType(14);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(slotOf<Save>(&filled, 20)(&filled, archive));
    const StoredBody stored(blockOf(archive), archive.softPointers(), {});
    EXPECT_TRUE(stored.read(
        [&free](orv::serialization::IInArchive& in) { return slotOf<Load>(&free, 22)(&free, in, 6); }));
    EXPECT_EQ(free.getDepth(), 4.5);
    EXPECT_EQ(free.getType(), 14);

    orv::KeyValueStorage storage;
    using SaveValues = bool (*)(const void*, orv::KeyValueStorage&);
    EXPECT_TRUE(slotOf<SaveValues>(&filled, 21)(&filled, storage));
    EXPECT_EQ(storage.getValue<double>("load/point/free/depth", 0.0), 4.5);
}

#endif
