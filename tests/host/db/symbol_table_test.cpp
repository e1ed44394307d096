#include "symbol_fixture.h"

#include "acutmem.h"
#include "rxclass.h"

#include <rapidcheck/gtest.h>

#include <algorithm>

namespace {

using SymbolTable = SymbolFixture;
using Names = std::vector<std::wstring>;

TEST_F(SymbolTable, NamesAreFoundWithoutRegardToCaseAndKeepTheirLetters) {
    const AcDbObjectId id = addLayer(L"Träger Ost");
    auto* table = open<AcDbLayerTable>(m_database->layerTableId());
    AcDbObjectId found;
    EXPECT_EQ(table->getAt(L"träger OST", found), Acad::eOk);
    EXPECT_EQ(found, id);
    EXPECT_TRUE(table->has(L"TRÄGER ost"));
    EXPECT_TRUE(table->has(id));
    AcDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(table->getAt(L"TRÄGER OST", record, AcDb::kForRead), Acad::eOk);
    ACHAR* name = nullptr;
    record->getName(name);
    EXPECT_STREQ(name, L"Träger Ost");
    acutDelBuffer(name);
    EXPECT_EQ(record->ownerId(), m_database->layerTableId());
    record->close();
    table->close();
}

TEST_F(SymbolTable, WhatIsNotThereIsKeyNotFoundWithANullId) {
    auto* table = open<AcDbLayerTable>(m_database->layerTableId());
    AcDbObjectId found = m_database->layerZero();
    EXPECT_EQ(table->getAt(L"none", found), Acad::eKeyNotFound);
    EXPECT_TRUE(found.isNull());
    AcDbLayerTableRecord* record = reinterpret_cast<AcDbLayerTableRecord*>(table);
    EXPECT_EQ(table->getAt(L"none", record, AcDb::kForRead), Acad::eKeyNotFound);
    EXPECT_EQ(record, nullptr);
    EXPECT_EQ(table->getAt(nullptr, found), Acad::eInvalidInput);
    EXPECT_FALSE(table->has(L""));
    EXPECT_FALSE(table->has(m_database->byLayerLinetype()));
    table->close();
}

TEST_F(SymbolTable, AnErasedRecordIsHiddenUntilItComesBack) {
    const AcDbObjectId id = addLayer(L"A");
    erase(id);
    EXPECT_EQ(names(m_database->layerTableId()), Names{L"0"});
    EXPECT_EQ(names(m_database->layerTableId(), true), (Names{L"0", L"A"}));
    auto* table = open<AcDbLayerTable>(m_database->layerTableId());
    AcDbObjectId found;
    EXPECT_EQ(table->getAt(L"A", found), Acad::eKeyNotFound);
    EXPECT_EQ(table->getAt(L"A", found, true), Acad::eOk);
    EXPECT_EQ(found, id);
    EXPECT_FALSE(table->has(id));
    AcDbLayerTableRecord* record = nullptr;
    EXPECT_EQ(table->getAt(L"A", record, AcDb::kForRead, true), Acad::eOk);
    record->close();
    table->close();
    erase(id, false);
    EXPECT_EQ(names(m_database->layerTableId()), (Names{L"0", L"A"}));
}

TEST_F(SymbolTable, ALiveRecordGoesBeforeAnErasedOneOfTheSameName) {
    erase(addLayer(L"A"));
    const AcDbObjectId second = addLayer(L"a");
    auto* table = open<AcDbLayerTable>(m_database->layerTableId());
    AcDbObjectId found;
    EXPECT_EQ(table->getAt(L"A", found, true), Acad::eOk);
    EXPECT_EQ(found, second);
    table->close();
}

TEST_F(SymbolTable, WhatCannotBeAddedIsRefused) {
    auto* table = open<AcDbLayerTable>(m_database->layerTableId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, nullptr), Acad::eInvalidInput);
    auto* record = new AcDbLayerTableRecord;
    EXPECT_EQ(table->add(record), Acad::eInvalidInput); // has no name
    record->setName(L"0");
    EXPECT_EQ(table->add(record), Acad::eDuplicateRecordName);
    EXPECT_TRUE(record->objectId().isNull());
    record->setName(L"A");
    EXPECT_EQ(table->add(record), Acad::eOk);
    EXPECT_EQ(table->add(record), Acad::eAlreadyInDb);
    record->close();
    auto* style = new AcDbTextStyleTableRecord;
    style->setName(L"B");
    EXPECT_EQ(table->add(style), Acad::eNotThatKindOfClass);
    table->close();
    AcDbTextStyleTable homeless;
    EXPECT_EQ(homeless.add(style), Acad::eNoDatabase);
    delete style;
}

TEST_F(SymbolTable, ARenamedRecordIsFoundByItsNewNameAlone) {
    const AcDbObjectId id = addLayer(L"A");
    addLayer(L"B");
    rename(id, L"C");
    auto* table = open<AcDbLayerTable>(m_database->layerTableId());
    AcDbObjectId found;
    EXPECT_EQ(table->getAt(L"c", found), Acad::eOk);
    EXPECT_EQ(found, id);
    EXPECT_FALSE(table->has(L"A"));
    table->close();
    auto* record = open<AcDbSymbolTableRecord>(id, AcDb::kForWrite);
    EXPECT_EQ(record->setName(L"b"), Acad::eDuplicateRecordName);
    EXPECT_EQ(record->setName(L""), Acad::eInvalidInput);
    EXPECT_EQ(record->setName(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(record->setName(L"c"), Acad::eOk); // its own in other letters
    record->close();
}

TEST_F(SymbolTable, UndoOfARenamingFindsTheOldName) {
    const AcDbObjectId id = addLayer(L"A");
    EXPECT_EQ(names(m_database->layerTableId()), (Names{L"0", L"A"}));
    embedded::beginCommand(*m_database);
    rename(id, L"C");
    embedded::beginCommand(*m_database);
    rename(id, L"D");
    auto found = [&](const wchar_t* name) {
        auto* table = open<AcDbLayerTable>(m_database->layerTableId());
        const bool has = table->has(name);
        table->close();
        return has;
    };
    EXPECT_TRUE(found(L"D"));
    embedded::undo(*m_database);
    EXPECT_TRUE(found(L"C"));
    EXPECT_FALSE(found(L"D"));
    embedded::undo(*m_database);
    EXPECT_TRUE(found(L"A"));
    embedded::redo(*m_database);
    EXPECT_TRUE(found(L"C"));
    EXPECT_FALSE(found(L"A"));
}

TEST_F(SymbolTable, UndoOfAnAdditionHidesTheRecordAndFreesItsName) {
    embedded::beginCommand(*m_database);
    const AcDbObjectId id = addLayer(L"A");
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(names(m_database->layerTableId()), Names{L"0"});
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(names(m_database->layerTableId()), (Names{L"0", L"A"}));
    EXPECT_TRUE(embedded::undo(*m_database));
    const AcDbObjectId second = addLayer(L"A");
    EXPECT_NE(second, id);
    EXPECT_EQ(names(m_database->layerTableId()), (Names{L"0", L"A"}));
}

TEST_F(SymbolTable, TheIteratorWalksBothWaysAndSeeks) {
    const AcDbObjectId a = addLayer(L"A");
    const AcDbObjectId b = addLayer(L"B");
    erase(a);
    auto* table = open<AcDbLayerTable>(m_database->layerTableId());
    AcDbLayerTableIterator* it = nullptr;
    ASSERT_EQ(table->newIterator(it, false), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(it->getRecordId(id), Acad::eOk);
    EXPECT_EQ(id, b);
    it->step(false);
    EXPECT_EQ(it->getRecordId(id), Acad::eOk);
    EXPECT_EQ(id, m_database->layerZero());
    it->step(false);
    EXPECT_TRUE(it->done());
    EXPECT_EQ(it->getRecordId(id), Acad::eIteratorDone);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(it->seek(a), Acad::eOk);
    AcDbLayerTableRecord* record = nullptr;
    EXPECT_EQ(it->getRecord(record), Acad::eWasErased);
    EXPECT_EQ(it->getRecord(record, AcDb::kForRead, true), Acad::eOk);
    EXPECT_EQ(it->seek(m_database->byLayerLinetype()), Acad::eRecordNotInTable);
    EXPECT_EQ(it->seek(record), Acad::eOk);
    record->close();
    it->start(true, true);
    it->step();
    EXPECT_EQ(it->getRecordId(id), Acad::eOk);
    EXPECT_EQ(id, b);
    delete it;
    table->close();
}

TEST_F(SymbolTable, WhatEveryDrawingMustHaveCannotBeErased) {
    for (AcDbObjectId id : {m_database->layerZero(), m_database->continuousLinetype(),
                            m_database->byLayerLinetype(), m_database->byBlockLinetype()}) {
        auto* record = open<AcDbSymbolTableRecord>(id, AcDb::kForWrite);
        EXPECT_EQ(record->erase(), Acad::eCannotBeErasedByCaller);
        EXPECT_FALSE(record->isErased());
        EXPECT_FALSE(record->isRenamable());
        record->close();
    }
    const AcDbObjectId id = addLayer(L"A");
    auto* record = open<AcDbSymbolTableRecord>(id);
    EXPECT_TRUE(record->isRenamable());
    EXPECT_FALSE(record->isDependent());
    record->close();
}

TEST_F(SymbolTable, ViewportsOfOneArrangementShareTheirName) {
    add<AcDbViewportTable>(m_database->viewportTableId(), new AcDbViewportTableRecord, L"*Active");
    EXPECT_EQ(names(m_database->viewportTableId()), (Names{L"*Active", L"*Active"}));
}

TEST_F(SymbolTable, AnonymousBlocksAreNumbered) {
    addBlock(L"*U2");
    auto* table = open<AcDbBlockTable>(m_database->blockTableId(), AcDb::kForWrite);
    Names made;
    for (int i = 0; i < 3; ++i) {
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"*U");
        ASSERT_EQ(table->add(record), Acad::eOk);
        EXPECT_TRUE(record->isAnonymous());
        const ACHAR* name = nullptr;
        record->getName(name);
        made.emplace_back(name);
        record->close();
    }
    table->close();
    EXPECT_EQ(made, (Names{L"*U1", L"*U3", L"*U4"}));
}

TEST_F(SymbolTable, LayerSettingsAreKeptApart) {
    const AcDbObjectId id = addLayer(L"A");
    auto* layer = open<AcDbLayerTableRecord>(id, AcDb::kForWrite);
    EXPECT_TRUE(layer->isPlottable());
    EXPECT_FALSE(layer->isFrozen() || layer->isOff() || layer->isLocked() || layer->VPDFLT());
    EXPECT_EQ(layer->lineWeight(), AcDb::kLnWtByLwDefault);
    EXPECT_EQ(layer->colorIndex(), 7);
    layer->setIsFrozen(true);
    layer->setIsLocked(true);
    EXPECT_EQ(layer->setIsPlottable(false), Acad::eOk);
    EXPECT_EQ(layer->setLineWeight(AcDb::kLnWt211), Acad::eOk);
    EXPECT_EQ(layer->setLineWeight(static_cast<AcDb::LineWeight>(7)), Acad::eInvalidInput);
    EXPECT_EQ(layer->setColorIndex(0), Acad::eInvalidInput);
    EXPECT_EQ(layer->setColorIndex(256), Acad::eInvalidInput);
    EXPECT_EQ(layer->setColorIndex(255), Acad::eOk);
    EXPECT_EQ(layer->setLinetypeObjectId(m_database->layerZero()), Acad::eInvalidInput);
    EXPECT_EQ(layer->setLinetypeObjectId(m_database->continuousLinetype()), Acad::eOk);
    EXPECT_TRUE(layer->isFrozen() && layer->isLocked());
    EXPECT_FALSE(layer->isOff() || layer->isPlottable() || layer->VPDFLT());
    EXPECT_EQ(layer->lineWeight(), AcDb::kLnWt211);
    EXPECT_EQ(layer->colorIndex(), 255);
    layer->setIsOff(true);
    layer->setIsFrozen(false);
    EXPECT_TRUE(layer->isOff() && layer->isLocked());
    EXPECT_FALSE(layer->isFrozen());
    layer->close();
}

TEST_F(SymbolTable, TheSettingsOfARecordComeBackWithUndo) {
    const AcDbObjectId id = addLayer(L"A");
    embedded::beginCommand(*m_database);
    auto* layer = open<AcDbLayerTableRecord>(id, AcDb::kForWrite);
    layer->setIsLocked(true);
    layer->setColorIndex(3);
    layer->close();
    EXPECT_TRUE(embedded::undo(*m_database));
    layer = open<AcDbLayerTableRecord>(id);
    EXPECT_FALSE(layer->isLocked());
    EXPECT_EQ(layer->colorIndex(), 7);
    layer->close();
    EXPECT_TRUE(embedded::redo(*m_database));
    layer = open<AcDbLayerTableRecord>(id);
    EXPECT_TRUE(layer->isLocked());
    EXPECT_EQ(layer->colorIndex(), 3);
    layer->close();
}

TEST_F(SymbolTable, ALinetypeHasUpToTwelveDashes) {
    AcDbLinetypeTableRecord linetype;
    EXPECT_EQ(linetype.setNumDashes(13), Acad::eInvalidInput);
    EXPECT_EQ(linetype.setNumDashes(-1), Acad::eInvalidInput);
    EXPECT_EQ(linetype.setNumDashes(2), Acad::eOk);
    EXPECT_EQ(linetype.setDashLengthAt(1, -0.25), Acad::eOk);
    EXPECT_EQ(linetype.setDashLengthAt(2, 1.0), Acad::eInvalidIndex);
    EXPECT_EQ(linetype.dashLengthAt(1), -0.25);
    EXPECT_EQ(linetype.dashLengthAt(2), 0.0);
    EXPECT_TRUE(linetype.shapeStyleAt(0).isNull());
}

TEST_F(SymbolTable, TextStylesRefuseWhatNoTextCanHave) {
    AcDbTextStyleTableRecord style;
    EXPECT_EQ(style.setTextSize(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(style.setXScale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(style.setObliquingAngle(1.5), Acad::eInvalidInput);
    EXPECT_EQ(style.setPriorSize(0.0), Acad::eInvalidInput);
    EXPECT_EQ(style.setObliquingAngle(0.3), Acad::eOk);
    EXPECT_EQ(style.obliquingAngle(), 0.3);
}

// Random steps on the layers against a plain list, with undo and redo in between.
RC_GTEST_FIXTURE_PROP(SymbolTable, AnyStepsLeaveWhatAPlainListHas, ()) {
    if (!m_database)
        SetUp();
    struct Entry {
        AcDbObjectId id;
        std::wstring name;
        bool live;
    };
    std::vector<std::vector<Entry>> states{{}};
    std::size_t at = 0;
    const int steps = *rc::gen::inRange(1, 30);
    for (int i = 0; i < steps; ++i) {
        std::vector<Entry> now = states[at];
        const int what = *rc::gen::inRange(0, 6);
        if (what == 4) {
            RC_ASSERT(embedded::undo(*m_database) == (at > 0));
            at -= at > 0 ? 1 : 0;
        } else if (what == 5) {
            RC_ASSERT(embedded::redo(*m_database) == (at + 1 < states.size()));
            at += at + 1 < states.size() ? 1 : 0;
        } else {
            const std::wstring name(1, static_cast<wchar_t>(L'A' + *rc::gen::inRange(0, 6)));
            auto holder = std::find_if(now.begin(), now.end(),
                                       [&](const Entry& e) { return e.live && e.name == name; });
            if (what == 3 && holder != now.end()) {
                embedded::beginCommand(*m_database);
                erase(holder->id);
                holder->live = false;
            } else if (what == 2 && holder == now.end() && !now.empty()) {
                auto other = std::find_if(now.begin(), now.end(), [](const Entry& e) { return e.live; });
                if (other == now.end())
                    continue;
                embedded::beginCommand(*m_database);
                rename(other->id, name.c_str());
                other->name = name;
            } else if (what < 2 && holder == now.end()) {
                embedded::beginCommand(*m_database);
                now.push_back({addLayer(name.c_str()), name, true});
            } else {
                continue;
            }
            states.resize(++at);
            states.push_back(now);
        }
        Names expected{L"0"};
        for (const Entry& entry : states[at])
            if (entry.live)
                expected.push_back(entry.name);
        RC_ASSERT(names(m_database->layerTableId()) == expected);
        auto* table = open<AcDbLayerTable>(m_database->layerTableId());
        for (wchar_t c = L'a'; c < L'g'; ++c) {
            const std::wstring name(1, c);
            const std::wstring upper(1, static_cast<wchar_t>(c - L'a' + L'A'));
            RC_ASSERT(table->has(name.c_str()) ==
                      (std::find(expected.begin(), expected.end(), upper) != expected.end()));
        }
        table->close();
    }
}

} // namespace
