#include "clone_fixture.h"
#include "db/database_core.h"

namespace {

class WblockClone : public CloneFixture {
protected:
    Acad::ErrorStatus cloneInto(AcDbObjectId owner, std::initializer_list<AcDbObjectId> all,
                                AcDb::DuplicateRecordCloning drc = AcDb::kDrcIgnore) {
        return m_to->wblockCloneObjects(ids(all), owner, m_mapping, drc);
    }
    AcDbObjectId copyOf(AcDbObjectId id) { return cloneOf(m_mapping, id); }
    static Adesk::UInt16 colourOf(AcDbObjectId layerId) {
        auto* layer = open<AcDbLayerTableRecord>(layerId);
        const Adesk::UInt16 colour = layer->colorIndex();
        layer->close();
        return colour;
    }
    AcDbObjectId entityOn(AcDbObjectId layerId, const wchar_t* text) {
        const AcDbObjectId id = entity(modelSpace(*m_from), text);
        change<CloneEntity>(id, [&](CloneEntity& e) { e.setLayer(layerId); });
        return id;
    }
    static AcDbObjectId layerOf(AcDbObjectId id) {
        auto* entity = open<CloneEntity>(id);
        const AcDbObjectId layer = entity->layerId();
        entity->close();
        return layer;
    }
    Texts layerNames() {
        Texts all;
        auto* table = open<AcDbLayerTable>(m_to->layerTableId());
        AcDbLayerTableIterator* made = nullptr;
        table->newIterator(made);
        const std::unique_ptr<AcDbLayerTableIterator> it(made);
        for (; !it->done(); it->step()) {
            AcDbLayerTableRecord* record = nullptr;
            it->getRecord(record);
            const ACHAR* name = nullptr;
            record->getName(name);
            all.emplace_back(name);
            record->close();
        }
        table->close();
        return all;
    }
    // Nothing in the target may lead to the other drawing.
    void expectNoForeignIds(AcDbDatabase& database) {
        database.core().stubs().forEach([&](AcDbStub& stub) {
            AcDbObject* object = nullptr;
            if (acdbOpenAcDbObject(object, AcDbObjectId(&stub), AcDb::kForRead) != Acad::eOk)
                return;
            EXPECT_TRUE(object->ownerId().isNull() || object->ownerId().database() == &database);
            if (const auto* entity = CloneEntity::cast(object))
                expectOwn(entity->fields, database);
            if (const auto* node = CloneNode::cast(object))
                expectOwn(node->fields, database);
            object->close();
        });
    }
    static void expectOwn(const NodeFields& fields, AcDbDatabase& database) {
        for (const auto* list :
             {&fields.softPointers, &fields.hardPointers, &fields.softOwned, &fields.hardOwned})
            for (const AcDbObjectId& id : *list)
                EXPECT_TRUE(id.isNull() || id.database() == &database);
    }

    AcDbIdMapping m_mapping;
};

TEST_F(WblockClone, AnEntityComesWithItsLayer) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A");
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A"}));
    EXPECT_EQ(layerOf(copyOf(a)), record(m_to->layerTableId(), L"L"));
    EXPECT_EQ(copyOf(l), record(m_to->layerTableId(), L"L"));
    EXPECT_EQ(colourOf(copyOf(l)), 3);
    auto* copied = open<AcDbLayerTableRecord>(copyOf(l));
    EXPECT_EQ(copied->linetypeObjectId(), m_to->continuousLinetype());
    EXPECT_EQ(copied->ownerId(), m_to->layerTableId());
    copied->close();
    EXPECT_EQ(texts(modelSpace(*m_from)), (Texts{L"A"}));
    expectNoForeignIds(*m_to);
}

TEST_F(WblockClone, LayerZeroIsTheTargetsOwn) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcMangleName), Acad::eOk);
    EXPECT_EQ(layerOf(copyOf(a)), m_to->layerZero());
    EXPECT_EQ(layerNames(), (Texts{L"0"}));
}

TEST_F(WblockClone, WithIgnoreTheTargetsRecordIsTaken) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A"), own = layer(*m_to, L"l", 5);
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    EXPECT_EQ(layerOf(copyOf(a)), own);
    EXPECT_EQ(colourOf(own), 5);
    AcDbIdPair pair;
    pair.setKey(l);
    ASSERT_TRUE(m_mapping.compute(pair));
    EXPECT_FALSE(pair.isCloned());
    EXPECT_EQ(layerNames(), (Texts{L"0", L"l"}));
}

TEST_F(WblockClone, WithReplaceTheTargetsRecordGetsTheContentAndKeepsItsId) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A"), own = layer(*m_to, L"L", 5);
    embedded::forgetHistory(*m_to);
    const Texts before = everything(*m_to);
    embedded::beginCommand(*m_to);
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcReplace), Acad::eOk);
    EXPECT_EQ(layerOf(copyOf(a)), own);
    EXPECT_EQ(colourOf(own), 3);
    expectNoForeignIds(*m_to);
    ASSERT_TRUE(embedded::undo(*m_to));
    EXPECT_EQ(colourOf(own), 5);
    EXPECT_EQ(difference(everything(*m_to), before), L"");
    ASSERT_TRUE(embedded::redo(*m_to));
    EXPECT_EQ(colourOf(own), 3);
}

TEST_F(WblockClone, WithMangledNamesTheRecordComesUnderTheFirstFreeOne) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A");
    layer(*m_to, L"L", 5);
    layer(*m_to, L"$0$L", 6);
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcMangleName), Acad::eOk);
    EXPECT_EQ(layerOf(copyOf(a)), record(m_to->layerTableId(), L"$1$L"));
    EXPECT_EQ(layerNames(), (Texts{L"0", L"L", L"$0$L", L"$1$L"}));
}

TEST_F(WblockClone, WithTheFilesNameInFrontToo) {
    CloneFolder folder;
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A");
    std::string error;
    ASSERT_TRUE(embedded::saveDocument(*m_from, folder.file(L"plan.dwg"), error)) << error;
    layer(*m_to, L"L", 5);
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcXrefMangleName), Acad::eOk);
    EXPECT_EQ(layerNames(), (Texts{L"0", L"L", L"plan$0$L"}));
}

TEST_F(WblockClone, AMangledNameIsMadePlainAgain) {
    const AcDbObjectId l = layer(*m_from, L"plan$12$L", 3), a = entityOn(l, L"A");
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcUnmangleName), Acad::eOk);
    EXPECT_EQ(layerNames(), (Texts{L"0", L"L"}));
}

TEST_F(WblockClone, HardReferencesAreFollowedAndSoftOnesAreNot) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A"), b = entity(space, L"B"), c = entity(space, L"C");
    const AcDbObjectId hard = ownedNode(a, L"hard"), soft = ownedNode(a, L"soft", false);
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.fields.hardPointers = {b};
        e.fields.softPointers = {c, b};
    });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A", L"B"}));
    const NodeFields fields = fieldsOf(copyOf(a));
    EXPECT_EQ(fields.hardPointers, (std::vector<AcDbObjectId>{copyOf(b)}));
    EXPECT_EQ(fields.softPointers, (std::vector<AcDbObjectId>{AcDbObjectId(), copyOf(b)}));
    EXPECT_EQ(fields.hardOwned, (std::vector<AcDbObjectId>{copyOf(hard)}));
    EXPECT_EQ(fields.softOwned, (std::vector<AcDbObjectId>{AcDbObjectId()}));
    EXPECT_TRUE(copyOf(soft).isNull());
    EXPECT_EQ(ownerOf(copyOf(hard)), copyOf(a));
    EXPECT_EQ(ownerOf(copyOf(b)), modelSpace(*m_to));
    expectNoForeignIds(*m_to);
}

TEST_F(WblockClone, BelowTheNamedObjectDictionaryWhatIsMissingIsClonedAtTheSamePath) {
    const AcDbObjectId n = node(dictionary(*m_from, {L"P", L"Q"}), L"N");
    node(dictionary(*m_from, {L"P", L"Q"}), L"OTHER");
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {n}; });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    const AcDbObjectId p = at(m_to->namedObjectsDictionaryId(), L"P");
    ASSERT_FALSE(p.isNull());
    EXPECT_EQ(names(p), (Texts{L"Q"}));
    EXPECT_EQ(names(at(p, L"Q")), (Texts{L"N"}));
    EXPECT_EQ(at(at(p, L"Q"), L"N"), copyOf(n));
    EXPECT_EQ(fieldsOf(copyOf(a)).hardPointers, (std::vector<AcDbObjectId>{copyOf(n)}));
    expectNoForeignIds(*m_to);
}

TEST_F(WblockClone, BelowTheNamedObjectDictionaryWhatStandsThereIsUsed) {
    const AcDbObjectId n = node(dictionary(*m_from, {L"P"}), L"N"),
                       m = node(dictionary(*m_from, {L"P"}), L"M");
    const AcDbObjectId own = node(dictionary(*m_to, {L"p"}), L"n");
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {n, m}; });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcReplace), Acad::eOk);
    EXPECT_EQ(fieldsOf(copyOf(a)).hardPointers, (std::vector<AcDbObjectId>{own, copyOf(m)}));
    EXPECT_EQ(fieldsOf(own).text, L"n");
    EXPECT_EQ(names(dictionary(*m_to, {L"P"})), (Texts{L"n", L"M"}));
}

TEST_F(WblockClone, WhatHasTheNameAndIsSomethingElseIsLeftAlone) {
    const AcDbObjectId n = node(dictionary(*m_from, {L"P"}), L"N");
    const AcDbObjectId other = dictionary(*m_to, {L"P", L"N"});
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {n}; });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    EXPECT_FALSE(other.isErased());
    EXPECT_EQ(names(dictionary(*m_to, {L"P"})), (Texts{L"N", L"$0$N"}));
    EXPECT_EQ(at(dictionary(*m_to, {L"P"}), L"$0$N"), copyOf(n));
}

TEST_F(WblockClone, ADictionarysEntriesGoAlongIfTheyAreHardOwned) {
    const AcDbObjectId soft = dictionary(*m_from, {L"SOFT"}), hard = dictionary(*m_from, {L"HARD"});
    node(soft, L"S");
    const AcDbObjectId h = node(hard, L"H");
    change<AcDbDictionary>(hard, [](AcDbDictionary& d) { d.setTreatElementsAsHard(true); });
    ASSERT_EQ(cloneInto(m_to->namedObjectsDictionaryId(), {soft, hard}), Acad::eOk);
    EXPECT_TRUE(names(copyOf(soft)).empty());
    EXPECT_EQ(names(copyOf(hard)), (Texts{L"H"}));
    EXPECT_EQ(at(copyOf(hard), L"H"), copyOf(h));
    EXPECT_EQ(at(m_to->namedObjectsDictionaryId(), L"HARD"), copyOf(hard));
    auto* copy = open<AcDbDictionary>(copyOf(hard));
    EXPECT_TRUE(copy->isTreatElementsAsHard());
    copy->close();
}

TEST_F(WblockClone, AnExtensionDictionaryGoesAlongWithItsEntries) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    AcDbObjectId extension;
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.createExtensionDictionary();
        extension = e.extensionDictionary();
    });
    const AcDbObjectId x = node(extension, L"X");
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    auto* copy = open<CloneEntity>(copyOf(a));
    EXPECT_EQ(copy->extensionDictionary(), copyOf(extension));
    copy->close();
    EXPECT_EQ(at(copyOf(extension), L"X"), copyOf(x));
}

TEST_F(WblockClone, AHardReferenceToAnExtensionDictionarysEntryBringsTheWholeObject) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), b = entity(modelSpace(*m_from), L"B");
    AcDbObjectId extension;
    change<CloneEntity>(b, [&](CloneEntity& e) {
        e.createExtensionDictionary();
        extension = e.extensionDictionary();
    });
    const AcDbObjectId x = node(extension, L"X");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {x}; });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A", L"B"}));
    EXPECT_EQ(fieldsOf(copyOf(a)).hardPointers, (std::vector<AcDbObjectId>{copyOf(x)}));
    EXPECT_EQ(ownerOf(copyOf(x)), copyOf(extension));
    EXPECT_EQ(at(copyOf(extension), L"X"), copyOf(x));
    EXPECT_EQ(ownerOf(copyOf(extension)), copyOf(b));
}

TEST_F(WblockClone, ABlockComesWithItsEntitiesAndTheirLayers) {
    const AcDbObjectId b = block(*m_from, L"B", {L"1", L"2", L"3"});
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {b}; });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    EXPECT_EQ(copyOf(b), record(m_to->blockTableId(), L"B"));
    EXPECT_EQ(texts(copyOf(b)), (Texts{L"1", L"2", L"3"}));
    EXPECT_EQ(fieldsOf(copyOf(a)).hardPointers, (std::vector<AcDbObjectId>{copyOf(b)}));
    expectNoForeignIds(*m_to);
}

TEST_F(WblockClone, WithReplaceABlockGetsTheOthersEntities) {
    const AcDbObjectId b = block(*m_from, L"B", {L"1", L"2"}), own = block(*m_to, L"B", {L"x"});
    embedded::forgetHistory(*m_to);
    embedded::beginCommand(*m_to);
    ASSERT_EQ(cloneInto(m_to->blockTableId(), {b}, AcDb::kDrcReplace), Acad::eOk);
    EXPECT_EQ(copyOf(b), own);
    EXPECT_EQ(texts(own), (Texts{L"1", L"2"}));
    ASSERT_TRUE(embedded::undo(*m_to));
    EXPECT_EQ(texts(own), (Texts{L"x"}));
}

TEST_F(WblockClone, AnAnonymousBlockIsAlwaysAnotherOne) {
    const AcDbObjectId b = block(*m_from, L"*U", {L"1"});
    block(*m_to, L"*U", {L"x"});
    ASSERT_EQ(cloneInto(m_to->blockTableId(), {b}), Acad::eOk);
    EXPECT_EQ(texts(copyOf(b)), (Texts{L"1"}));
    EXPECT_EQ(texts(record(m_to->blockTableId(), L"*U1")), (Texts{L"x"}));
}

TEST_F(WblockClone, ModelSpaceAndTheTablesAreTheTargetsOwn) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.fields.hardPointers = {modelSpace(*m_from), m_from->layerTableId(),
                                 m_from->namedObjectsDictionaryId(), m_from->layoutDictionaryId()};
    });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcReplace), Acad::eOk);
    EXPECT_EQ(fieldsOf(copyOf(a)).hardPointers,
              (std::vector<AcDbObjectId>{modelSpace(*m_to), m_to->layerTableId(),
                                         m_to->namedObjectsDictionaryId(), m_to->layoutDictionaryId()}));
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A"}));
}

TEST_F(WblockClone, ObjectsThatOwnEachOtherInACircleHaveNoPlace) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    const AcDbObjectId x = ownedNode(a, L"x"), y = ownedNode(x, L"y");
    change<CloneNode>(x, [&](CloneNode& n) { n.setOwnerId(y); });
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.fields.hardOwned.clear();
        e.fields.hardPointers = {x};
    });
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOwnerNotSet);
    EXPECT_TRUE(texts(modelSpace(*m_to)).empty());
}

TEST_F(WblockClone, AnOwnerThatDoesNotApplyFailsTheCloning) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), bound = entity(modelSpace(*m_from), L"BOUND");
    const AcDbObjectId x = ownedNode(bound, L"x");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {x}; });
    nodeFaults().text = L"BOUND";
    nodeFaults().wblockClone = Acad::eNotApplicable;
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOwnerNotSet);
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {bound}), Acad::eOk) << "asked for, it is left out";
    EXPECT_TRUE(texts(modelSpace(*m_to)).empty());
}

TEST_F(WblockClone, AFailureLeavesTheTargetAsItWas) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A");
    layer(*m_to, L"L", 5);
    const AcDbObjectId n = node(dictionary(*m_from, {L"P", L"Q"}), L"BAD");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {n}; });
    embedded::forgetHistory(*m_to);
    const Texts before = everything(*m_to), other = everything(*m_from);
    nodeFaults().text = L"BAD";
    nodeFaults().write = Acad::eFilerError;
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {a}, AcDb::kDrcReplace), Acad::eFilerError);
    EXPECT_EQ(difference(everything(*m_to), before), L"");
    EXPECT_FALSE(embedded::undo(*m_to));
    nodeFaults() = NodeFaults();
    EXPECT_EQ(difference(everything(*m_from), other), L"");
}

TEST_F(WblockClone, WhatIsRefusedSaysWhy) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), b = entity(modelSpace(*m_to), L"B");
    AcDbDatabase third(true);
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {}), Acad::eInvalidInput);
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {b}), Acad::eInvalidInput);
    EXPECT_EQ(cloneInto(modelSpace(*m_to), {a, b}), Acad::eWrongDatabase);
    EXPECT_EQ(third.wblockCloneObjects(ids({a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore),
              Acad::eWrongDatabase);
    EXPECT_EQ(cloneInto(AcDbObjectId(), {a}), Acad::eNullObjectId);
    EXPECT_EQ(m_from->wblockCloneObjects(ids({a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore), Acad::eOk)
        << "asked of the original's database, it is the same";
}

TEST_F(WblockClone, TheTargetIsSavedAndReadAgain) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A"), b = block(*m_from, L"B", {L"1"});
    ownedNode(a, L"owned");
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.fields.hardPointers = {b};
        e.createExtensionDictionary();
    });
    ASSERT_EQ(cloneInto(modelSpace(*m_to), {a}), Acad::eOk);
    CloneFolder folder;
    std::string error;
    ASSERT_TRUE(embedded::saveDocument(*m_to, folder.file(L"a.dwg"), error)) << error;
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(folder.file(L"a.dwg").c_str()), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(again)), (Texts{L"A"}));
    EXPECT_EQ(texts(record(again.blockTableId(), L"B")), (Texts{L"1"}));
    EXPECT_EQ(difference(everything(again), everything(*m_to)), L"");
}

class Wblock : public WblockClone {};

TEST_F(Wblock, ChosenObjectsBecomeADrawingWithANewOrigin) {
    const AcDbObjectId l = layer(*m_from, L"L", 3), a = entityOn(l, L"A");
    entity(modelSpace(*m_from), L"B");
    change<CloneEntity>(a, [](CloneEntity& e) { e.place = AcGePoint3d(10, 20, 30); });
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made, ids({a}), AcGePoint3d(1, 2, 3)), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> out(made);
    EXPECT_EQ(texts(modelSpace(*out)), (Texts{L"A"}));
    EXPECT_TRUE(out->undoRecording());
    EXPECT_FALSE(embedded::undo(*out)) << "the drawing begins with what it got";
    EXPECT_FALSE(record(out->layerTableId(), L"L").isNull());
    AcDbBlockTableRecordIterator* it = nullptr;
    auto* space = open<AcDbBlockTableRecord>(modelSpace(*out));
    space->newIterator(it);
    AcDbObjectId id;
    it->getEntityId(id);
    delete it;
    space->close();
    auto* copy = open<CloneEntity>(id);
    EXPECT_EQ(copy->place, AcGePoint3d(9, 18, 27));
    copy->close();
    expectNoForeignIds(*out);
}

TEST_F(Wblock, AnEntityThatCannotBeMovedFailsTheWhole) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"FIXED");
    AcDbDatabase* made = m_to.get();
    EXPECT_EQ(m_from->wblock(made, ids({a}), AcGePoint3d(1, 0, 0)), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(made, nullptr);
    ASSERT_EQ(m_from->wblock(made, ids({a}), AcGePoint3d()), Acad::eOk);
    delete made;
}

TEST_F(Wblock, ABlockBecomesADrawing) {
    const AcDbObjectId b = block(*m_from, L"B", {L"1", L"2"});
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made, b), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*made)), (Texts{L"1", L"2"}));
    EXPECT_TRUE(record(made->blockTableId(), L"B").isNull());
    delete made;
    EXPECT_EQ(m_from->wblock(made, AcDbObjectId()), Acad::eNullObjectId);
    EXPECT_EQ(m_to->wblock(made, b), Acad::eWrongDatabase);
    EXPECT_EQ(m_from->wblock(made, m_from->layerTableId()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(made, nullptr);
}

TEST_F(Wblock, AWholeDrawingIsWrittenWithoutWhatNothingLeadsTo) {
    const AcDbObjectId l = layer(*m_from, L"L", 3);
    layer(*m_from, L"UNUSED", 4);
    entityOn(l, L"A");
    entity(m_from->core().roots.paperSpace, L"P");
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*made)), (Texts{L"A"}));
    EXPECT_EQ(texts(made->core().roots.paperSpace), (Texts{L"P"}));
    EXPECT_FALSE(record(made->layerTableId(), L"L").isNull());
    EXPECT_TRUE(record(made->layerTableId(), L"UNUSED").isNull());
    delete made;
}

} // namespace
