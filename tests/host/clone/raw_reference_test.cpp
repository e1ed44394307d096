#include "clone_fixture.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "dbxrecrd.h"

namespace {

using Bytes = std::vector<Adesk::UInt8>;

Bytes handleOf(AcDbObjectId id, bool littleEndian) {
    Bytes bytes;
    for (int i = 0; i < 8; ++i)
        bytes.push_back(
            static_cast<Adesk::UInt8>(static_cast<Adesk::UInt64>(id.isNull() ? AcDbHandle() : id.handle()) >>
                                      (8 * (littleEndian ? i : 7 - i))));
    return bytes;
}

Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// One of each kind of value, and a reference of each strength.
Bytes recordOf(AcDbObjectId soft, AcDbObjectId hard, AcDbObjectId softOwned, AcDbObjectId hardOwned,
               AcDbObjectId asItIs) {
    return Bytes{1, 0, 3, 0, 30, 'a', 'b', 'c'} + Bytes{10, 0} + Bytes(24, 1) + Bytes{40, 0} + Bytes(8, 2) +
           Bytes{70, 0, 0x4A, 0x01} + Bytes{90, 0, 1, 2, 3, 4} + Bytes{0x18, 0x01, 7} + Bytes{0x22, 0x01, 1} +
           Bytes{0x36, 0x01, 2, 0x4A, 0x01} + Bytes{0xA0, 0x00} + Bytes(8, 3) + Bytes{0x40, 0x01} +
           handleOf(asItIs, true) + Bytes{0x4A, 0x01} + handleOf(soft, true) + Bytes{0x54, 0x01} +
           handleOf(hard, true) + Bytes{0x5E, 0x01} + handleOf(softOwned, true) + Bytes{0x68, 0x01} +
           handleOf(hardOwned, true);
}

Bytes extendedOf(AcDbObjectId layer, AcDbObjectId neighbour) {
    return Bytes{0, 2, 0, 30, 'x', 'y'} + Bytes{2, 0} + Bytes{3} + handleOf(layer, false) +
           Bytes{4, 2, 5, 5} + Bytes{5} + handleOf(neighbour, false) + Bytes{10} + Bytes(24, 1) + Bytes{40} +
           Bytes(8, 1) + Bytes{70, 1, 2} + Bytes{71, 1, 2, 3, 4} + Bytes{2, 1};
}

class RawReferences : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        m_dictionary = dictionary(*m_from, {L"D"});
        auto* owner = open<AcDbDictionary>(m_dictionary, AcDb::kForWrite);
        auto* made = new AcDbXrecord;
        EXPECT_EQ(owner->setAt(L"X", made, m_record), Acad::eOk);
        made->close();
        owner->close();
        m_soft = node(m_dictionary, L"SOFT");
        m_hard = node(m_dictionary, L"HARD");
        m_softOwned = below(L"soft owned");
        m_hardOwned = below(L"hard owned");
        setData(recordOf(m_soft, m_hard, m_softOwned, m_hardOwned, m_soft));
    }
    AcDbObjectId below(const wchar_t* text) {
        auto* made = new CloneNode;
        made->fields.text = text;
        AcDbObjectId id;
        m_from->addAcDbObject(id, made);
        made->setOwnerId(m_record);
        made->close();
        return id;
    }
    void setData(const Bytes& bytes) {
        auto* record = open<AcDbXrecord>(m_record, AcDb::kForWrite);
        record->setRawData(bytes);
        record->close();
    }
    static Bytes dataOf(AcDbObjectId id) {
        auto* record = open<AcDbXrecord>(id);
        const Bytes bytes = record->rawData();
        record->close();
        return bytes;
    }
    AcDbObjectId copyOf(AcDbObjectId id) { return cloneOf(m_mapping, id); }

    AcDbObjectId m_dictionary, m_record, m_soft, m_hard, m_softOwned, m_hardOwned;
    AcDbIdMapping m_mapping;
};

TEST_F(RawReferences, InsideADrawingOwnedValuesOfARecordAreClonedAndOthersStay) {
    ASSERT_EQ(m_from->deepCloneObjects(ids({m_record}), dictionary(*m_from, {L"E"}), m_mapping), Acad::eOk);
    EXPECT_EQ(ownerOf(copyOf(m_softOwned)), copyOf(m_record));
    EXPECT_EQ(dataOf(copyOf(m_record)),
              recordOf(m_soft, m_hard, copyOf(m_softOwned), copyOf(m_hardOwned), m_soft));
    EXPECT_EQ(dataOf(m_record), recordOf(m_soft, m_hard, m_softOwned, m_hardOwned, m_soft));
}

TEST_F(RawReferences, IntoAnotherDrawingHardValuesOfARecordAreCloned) {
    ASSERT_EQ(m_to->wblockCloneObjects(ids({m_record}), m_to->namedObjectsDictionaryId(), m_mapping,
                                       AcDb::kDrcIgnore),
              Acad::eOk);
    const AcDbObjectId none;
    // The last one is a handle that stands for itself, and none of an object.
    EXPECT_EQ(dataOf(copyOf(m_record)), recordOf(none, copyOf(m_hard), none, copyOf(m_hardOwned), m_soft));
    EXPECT_EQ(at(dictionary(*m_to, {L"D"}), L"HARD"), copyOf(m_hard));
}

TEST_F(RawReferences, EveryPrefixOfARecordIsCloned) {
    const Bytes whole = recordOf(m_soft, m_hard, m_softOwned, m_hardOwned, m_soft);
    const AcDbObjectId owner = dictionary(*m_from, {L"E"});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        setData(prefix);
        AcDbIdMapping mapping;
        ASSERT_EQ(m_from->deepCloneObjects(ids({m_record}), owner, mapping), Acad::eOk) << length;
        EXPECT_EQ(dataOf(cloneOf(mapping, m_record)).size(), length);
    }
}

TEST_F(RawReferences, EverySingleDamagedBitOfARecordIsCloned) {
    const Bytes whole = recordOf(m_soft, m_hard, m_softOwned, m_hardOwned, m_soft);
    const AcDbObjectId owner = dictionary(*m_from, {L"E"});
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        Bytes damaged = whole;
        damaged[bit / 8] = static_cast<Adesk::UInt8>(damaged[bit / 8] ^ (1 << bit % 8));
        setData(damaged);
        AcDbIdMapping mapping;
        ASSERT_EQ(m_from->deepCloneObjects(ids({m_record}), owner, mapping), Acad::eOk) << bit;
        EXPECT_EQ(dataOf(cloneOf(mapping, m_record)).size(), whole.size());
    }
}

class ExtendedReferences : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        m_a = entity(modelSpace(*m_from), L"A");
        m_b = entity(modelSpace(*m_from), L"B");
        m_layer = layer(*m_from, L"L", 3);
        auto* table = open<AcDbRegAppTable>(m_from->regAppTableId(), AcDb::kForWrite);
        auto* made = new AcDbRegAppTableRecord;
        made->setName(L"APP");
        table->add(m_application, made);
        made->close();
        table->close();
        change<CloneEntity>(m_a, [&](CloneEntity& e) {
            embedded::ObjectAccess::makeExtras(e).extendedData.push_back(
                {m_application, extendedOf(m_layer, m_b)});
        });
    }
    static embedded::ExtendedData dataOf(AcDbObjectId id) {
        auto* entity = open<CloneEntity>(id);
        const embedded::ExtendedData data = embedded::ObjectAccess::extras(*entity)->extendedData.at(0);
        entity->close();
        return data;
    }

    AcDbObjectId m_a, m_b, m_layer, m_application;
    AcDbIdMapping m_mapping;
};

TEST_F(ExtendedReferences, InsideADrawingANeighbourIsItsCloneIfItHasOne) {
    ASSERT_EQ(m_from->deepCloneObjects(ids({m_a, m_b}), modelSpace(*m_from), m_mapping), Acad::eOk);
    const embedded::ExtendedData data = dataOf(cloneOf(m_mapping, m_a));
    EXPECT_EQ(data.application, m_application);
    EXPECT_EQ(data.bytes, extendedOf(m_layer, cloneOf(m_mapping, m_b)));
    EXPECT_EQ(dataOf(m_a).bytes, extendedOf(m_layer, m_b));
}

TEST_F(ExtendedReferences, IntoAnotherDrawingComeApplicationAndLayer) {
    ASSERT_EQ(m_to->wblockCloneObjects(ids({m_a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    const embedded::ExtendedData data = dataOf(cloneOf(m_mapping, m_a));
    EXPECT_EQ(data.application, record(m_to->regAppTableId(), L"APP"));
    EXPECT_EQ(data.bytes, extendedOf(record(m_to->layerTableId(), L"L"), AcDbObjectId()));
}

} // namespace
