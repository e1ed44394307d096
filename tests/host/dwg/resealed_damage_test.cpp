// Damage under check sums that are right: what a wrong program, or one with bad intent, could write.

#include "thing_fixture.h"

#include "dwg/container_r2000.h"
#include "dwg/header_variables.h"
#include "dwg/object_map.h"
#include "dwg/root_variables.h"

#include <deque>
#include <random>

using namespace embedded::dwg;

namespace {

class ResealedDamage : public ThingFixture, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ThingFixture::SetUp();
        const std::string original = drawingFile(GetParam());
        if (!std::filesystem::exists(original))
            GTEST_SKIP() << "no " << original;
        const auto database = readFile(platform::fromUtf8(original));
        put(*database, L"THING", made<FiledThing>(L"thing"));
        append(*database, made<FiledEntity>(L"entity"));
        save(*database, L"whole.dwg");
        m_whole = readContainerR2000(std::make_shared<const Bytes>(bytesOfFile(narrowPath(L"whole.dwg"))));
        m_roots = rootHandles(HeaderVariables::read(m_whole.headerVariables));
    }

    void flipBits(Bytes& bytes) {
        for (unsigned flips = 1 + m_random() % 3; flips > 0 && !bytes.empty(); --flips)
            bytes[m_random() % bytes.size()] ^= static_cast<std::uint8_t>(1 << m_random() % 8);
    }

    // Opens each object, for write where it lets, so that the save files it anew. Answers how many opened.
    std::size_t openAll(const DrawingParts& parts, bool andSave) {
        std::vector<std::size_t> order(parts.objects.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        writeFile(narrowPath(L"damaged.dwg"), writeContainerR2000(parts, order, m_roots));
        AcDbDatabase database(false);
        if (database.readDwgFile(path(L"damaged.dwg").c_str()) != Acad::eOk)
            return 0;
        std::size_t opened = 0;
        embedded::forEachObject(database, [&](AcDbObjectId id) {
            AcDbObject* object = nullptr;
            if (acdbOpenAcDbObject(object, id, AcDb::kForWrite) != Acad::eOk)
                return;
            object->assertWriteEnabled(false);
            object->close();
            ++opened;
        });
        if (andSave && database.saveAs(path(L"saved.dwg").c_str()) == Acad::eOk) {
            EXPECT_NO_THROW(
                readContainerR2000(std::make_shared<const Bytes>(bytesOfFile(narrowPath(L"saved.dwg")))));
        }
        return opened;
    }

    DrawingParts m_whole;
    RootHandles m_roots;
    std::mt19937 m_random{191};
};

} // namespace

TEST_P(ResealedDamage, NoneOpensAllObjects) { EXPECT_EQ(openAll(m_whole, true), m_whole.objects.size()); }

TEST_P(ResealedDamage, InEveryObjectItOpensOrIsRefused) {
    for (int round = 0; round < 60; ++round) {
        DrawingParts parts = m_whole;
        std::deque<Bytes> bodies;
        for (ObjectSlot& slot : parts.objects) {
            bodies.push_back(slot.body.copy());
            flipBits(bodies.back());
            slot.body = bodies.back();
            slot.sum = objectSum(slot.body);
        }
        openAll(parts, round % 10 == 0);
    }
}

TEST_P(ResealedDamage, InSomeObjectsTheOthersOpen) {
    for (int round = 0; round < 60; ++round) {
        DrawingParts parts = m_whole;
        std::deque<Bytes> bodies;
        for (std::size_t i = 0; i < 3; ++i) {
            ObjectSlot& slot = parts.objects[m_random() % parts.objects.size()];
            bodies.push_back(slot.body.copy());
            flipBits(bodies.back());
            slot.body = bodies.back();
            slot.sum = objectSum(slot.body);
        }
        const std::size_t opened = openAll(parts, round % 10 == 0);
        EXPECT_TRUE(opened == 0 || opened + 3 >= parts.objects.size()) << opened;
    }
}

TEST_P(ResealedDamage, InObjectsThatAreCutShort) {
    for (int round = 0; round < 30; ++round) {
        DrawingParts parts = m_whole;
        for (ObjectSlot& slot : parts.objects) {
            slot.body = slot.body.part(0, 1 + m_random() % slot.body.size);
            slot.sum = objectSum(slot.body);
        }
        openAll(parts, false);
    }
}

TEST_P(ResealedDamage, InTheHeaderVariablesAndTheClassTable) {
    for (int round = 0; round < 300; ++round) {
        DrawingParts parts = m_whole;
        Bytes variables = parts.headerVariables.copy();
        Bytes classes = parts.classes.copy();
        flipBits(round % 2 == 0 ? variables : classes);
        parts.headerVariables = variables;
        parts.classes = classes;
        openAll(parts, round % 50 == 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Drawings, ResealedDamage, testing::Values("small_AC1015.dwg", "leader_AC1015.dwg"));
