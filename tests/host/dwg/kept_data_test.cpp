#include "embedded/kept_data.h"
#include "thing_fixture.h"

namespace {

class KeptData : public ThingFixture {
protected:
    // The thing's bytes are as many as this number, which it files ahead of them.
    static constexpr int kFiled = 0x1234;

    static bool keeps(AcDbObjectId id, Adesk::Int32 number) {
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk);
        const bool found = embedded::keepsNumber(*object, number);
        object->close();
        return found;
    }

    std::unique_ptr<AcDbDatabase> drawingWithThing(const std::wstring& text) {
        AcDbDatabase database(true);
        auto* const thing = made<FiledThing>(text);
        thing->fields.bytes.assign(kFiled, 0);
        put(database, L"THING", thing);
        save(database, L"a.dwg");
        return read(L"a.dwg");
    }
};

} // namespace

TEST_F(KeptData, ANumberOfAnObjectWithoutItsClassIsFoundAtAnyBit) {
    for (const wchar_t* text : {L"", L"a", L"three"}) {
        registerThings();
        drawingWithThing(text);
        unregisterThings();
        const auto away = read(L"a.dwg");
        const AcDbObjectId id = find(*away, L"THING");
        EXPECT_TRUE(keeps(id, kFiled));
        EXPECT_FALSE(keeps(id, kFiled + 1));
        EXPECT_FALSE(keeps(id, 0x736456af));
    }
}

TEST_F(KeptData, NothingIsKeptOfALiveObject) {
    const auto drawing = drawingWithThing(L"a");
    EXPECT_FALSE(keeps(find(*drawing, L"THING"), kFiled));
    EXPECT_FALSE(keeps(drawing->layerZero(), 0));
}
