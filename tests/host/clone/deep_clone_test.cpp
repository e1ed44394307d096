#include "clone_fixture.h"
#include "db/database_core.h"
#include "dbtrans.h"
#include "dbxrecrd.h"
#include "embedded/memory_filer.h"

#include <stdexcept>

namespace {

class DeepClone : public CloneFixture {
protected:
    Acad::ErrorStatus cloneInto(AcDbObjectId owner, std::initializer_list<AcDbObjectId> all) {
        return m_from->deepCloneObjects(ids(all), owner, m_mapping);
    }
    AcDbObjectId copyOf(AcDbObjectId id) { return cloneOf(m_mapping, id); }

    static AcDbObjectId nodeBelow(AcDbObjectId owner, const wchar_t* text) {
        auto* made = new CloneNode;
        made->fields.text = text;
        AcDbObjectId id;
        EXPECT_EQ(owner.database()->addAcDbObject(id, made), Acad::eOk);
        made->setOwnerId(owner);
        made->close();
        return id;
    }
    // References come from files alone: the record files in what one would hold.
    static void fillReferences(AcDbXrecord& record, AcDbObjectId owner,
                               const std::vector<AcDbXrecord::Reference>& references) {
        std::vector<std::uint8_t> bytes;
        embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
        out.writeSoftPointerId(owner);
        out.writeUInt32(0);
        out.writeHardOwnershipId(AcDbObjectId());
        out.writeUInt32(0);
        out.writeUInt32(3);
        for (Adesk::UInt8 byte : {1, 2, 3})
            out.writeUInt8(byte);
        out.writeUInt16(AcDb::kDrcIgnore);
        out.writeUInt32(static_cast<Adesk::UInt32>(references.size()));
        for (const AcDbXrecord::Reference& reference : references) {
            out.writeUInt8(reference.code);
            out.writeSoftPointerId(reference.id);
        }
        embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
        EXPECT_EQ(record.dwgInFields(&in), Acad::eOk);
    }

    AcDbIdMapping m_mapping;
};

TEST_F(DeepClone, AnEntityIsCopiedBehindTheOthersWithTheSameFields) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A");
    entity(space, L"B");
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    EXPECT_EQ(texts(space), (Texts{L"A", L"B", L"A"}));
    AcDbIdPair pair;
    pair.setKey(a);
    ASSERT_TRUE(m_mapping.compute(pair));
    EXPECT_TRUE(pair.isCloned() && pair.isPrimary() && pair.isOwnerXlated());
    EXPECT_NE(pair.value(), a);
    EXPECT_EQ(ownerOf(pair.value()), space);
    auto* copy = open<CloneEntity>(pair.value());
    EXPECT_EQ(copy->layerId(), m_from->layerZero());
    EXPECT_FALSE(copy->isWriteEnabled());
    copy->close();
}

TEST_F(DeepClone, ReferencesAmongWhatIsClonedEndAtTheClonesAndOthersStay) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A"), b = entity(space, L"B"), c = entity(space, L"C");
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.fields.softPointers = {b, c, AcDbObjectId()};
        e.fields.hardPointers = {c, b};
    });
    ASSERT_EQ(cloneInto(space, {a, b}), Acad::eOk);
    const NodeFields fields = fieldsOf(copyOf(a));
    EXPECT_EQ(fields.softPointers, (std::vector<AcDbObjectId>{copyOf(b), c, AcDbObjectId()}));
    EXPECT_EQ(fields.hardPointers, (std::vector<AcDbObjectId>{c, copyOf(b)}));
    EXPECT_EQ(texts(space), (Texts{L"A", L"B", L"C", L"A", L"B"}));
    EXPECT_EQ(fieldsOf(a).softPointers, (std::vector<AcDbObjectId>{b, c, AcDbObjectId()}));
}

TEST_F(DeepClone, WhatIsOwnedGoesAlongSoftlyAndHard) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A");
    const AcDbObjectId hard = ownedNode(a, L"hard"), soft = ownedNode(a, L"soft", false);
    const AcDbObjectId deeper = ownedNode(hard, L"deeper");
    change<CloneNode>(deeper, [&](CloneNode& n) { n.fields.softPointers = {a, soft}; });
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    const NodeFields fields = fieldsOf(copyOf(a));
    EXPECT_EQ(fields.hardOwned, (std::vector<AcDbObjectId>{copyOf(hard)}));
    EXPECT_EQ(fields.softOwned, (std::vector<AcDbObjectId>{copyOf(soft)}));
    EXPECT_EQ(ownerOf(copyOf(hard)), copyOf(a));
    EXPECT_EQ(ownerOf(copyOf(deeper)), copyOf(hard));
    EXPECT_EQ(fieldsOf(copyOf(deeper)).softPointers, (std::vector<AcDbObjectId>{copyOf(a), copyOf(soft)}));
    AcDbIdPair pair;
    pair.setKey(deeper);
    ASSERT_TRUE(m_mapping.compute(pair));
    EXPECT_FALSE(pair.isPrimary());
    EXPECT_EQ(fieldsOf(a).hardOwned, (std::vector<AcDbObjectId>{hard}));
}

TEST_F(DeepClone, NothingIsOwnedTwice) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A"), b = entity(space, L"B");
    const AcDbObjectId owned = ownedNode(b, L"owned");
    const AcDbObjectId gone = ownedNode(a, L"gone");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardOwned.push_back(owned); });
    change<CloneNode>(gone, [](CloneNode& n) { n.erase(); });
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    EXPECT_EQ(fieldsOf(copyOf(a)).hardOwned, (std::vector<AcDbObjectId>{AcDbObjectId(), AcDbObjectId()}));
    EXPECT_TRUE(copyOf(owned).isNull());
}

TEST_F(DeepClone, AnExtensionDictionaryGoesAlongWithItsEntries) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A");
    AcDbObjectId extension;
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.createExtensionDictionary();
        extension = e.extensionDictionary();
    });
    const AcDbObjectId x = node(extension, L"X");
    node(extension, L"Y");
    change<CloneNode>(x, [&](CloneNode& n) { n.fields.softPointers = {a}; });
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    auto* copy = open<CloneEntity>(copyOf(a));
    const AcDbObjectId extensionCopy = copy->extensionDictionary();
    copy->close();
    EXPECT_EQ(extensionCopy, copyOf(extension));
    EXPECT_NE(extensionCopy, extension);
    EXPECT_EQ(ownerOf(extensionCopy), copyOf(a));
    EXPECT_EQ(names(extensionCopy), (Texts{L"X", L"Y"}));
    EXPECT_EQ(at(extensionCopy, L"X"), copyOf(x));
    EXPECT_EQ(fieldsOf(copyOf(x)).softPointers, (std::vector<AcDbObjectId>{copyOf(a)}));
    EXPECT_EQ(names(extension), (Texts{L"X", L"Y"}));
    change<CloneEntity>(copyOf(a), [](CloneEntity& e) { e.erase(); });
    EXPECT_FALSE(x.isErased()) << "the copy owns copies";
    EXPECT_TRUE(copyOf(x).isErased());
}

TEST_F(DeepClone, ADictionaryIsCopiedUnderAFreeNameWithItsEntriesInOrder) {
    const AcDbObjectId parent = dictionary(*m_from, {L"P"}), d = dictionary(*m_from, {L"P", L"D"});
    const AcDbObjectId b = node(d, L"B"), a = node(d, L"A");
    change<CloneNode>(b, [&](CloneNode& n) { n.fields.softPointers = {a, parent}; });
    ASSERT_EQ(cloneInto(parent, {d}), Acad::eOk);
    EXPECT_EQ(names(parent), (Texts{L"D", L"*A1"}));
    EXPECT_EQ(at(parent, L"*A1"), copyOf(d));
    EXPECT_EQ(names(copyOf(d)), (Texts{L"B", L"A"}));
    EXPECT_EQ(ownerOf(copyOf(a)), copyOf(d));
    EXPECT_EQ(fieldsOf(copyOf(b)).softPointers, (std::vector<AcDbObjectId>{copyOf(a), parent}));
    AcDbObject* copy = open<AcDbObject>(copyOf(a));
    EXPECT_TRUE(copy->hasPersistentReactor(copyOf(d)));
    EXPECT_FALSE(copy->hasPersistentReactor(d));
    copy->close();
}

TEST_F(DeepClone, AnXrecordsReferencesAreTranslatedByTheirStrength) {
    const AcDbObjectId d = dictionary(*m_from, {L"D"}), e = dictionary(*m_from, {L"E"});
    const AcDbObjectId n = node(d, L"N"), stays = node(d, L"STAYS");
    auto* owner = open<AcDbDictionary>(d, AcDb::kForWrite);
    auto* made = new AcDbXrecord;
    AcDbObjectId x;
    ASSERT_EQ(owner->setAt(L"X", made, x), Acad::eOk);
    owner->close();
    const AcDbObjectId owned = nodeBelow(x, L"owned");
    fillReferences(*made, d, {{3, owned}, {4, n}, {5, n}, {4, stays}, {5, stays}, {2, stays}});
    made->close();
    ASSERT_EQ(cloneInto(e, {x, n}), Acad::eOk);
    EXPECT_EQ(names(e), (Texts{L"X", L"N"}));
    EXPECT_EQ(ownerOf(copyOf(owned)), copyOf(x));
    auto* copy = open<AcDbXrecord>(copyOf(x));
    EXPECT_EQ(copy->rawData(), (std::vector<Adesk::UInt8>{1, 2, 3}));
    const std::vector<AcDbObjectId> expected{copyOf(owned), copyOf(n), copyOf(n),
                                             stays,         stays,     AcDbObjectId()};
    std::vector<AcDbObjectId> found;
    for (const AcDbXrecord::Reference& reference : copy->references())
        found.push_back(reference.id);
    EXPECT_EQ(found, expected);
    copy->close();
}

TEST_F(DeepClone, AnAnonymousBlockIsCopiedWithItsEntitiesUnderAnotherNumber) {
    const AcDbObjectId b = block(*m_from, L"*U", {L"A", L"B"});
    ASSERT_EQ(cloneInto(m_from->blockTableId(), {b}), Acad::eOk);
    EXPECT_NE(copyOf(b), b);
    EXPECT_EQ(texts(copyOf(b)), (Texts{L"A", L"B"}));
    EXPECT_EQ(texts(b), (Texts{L"A", L"B"}));
    auto* copy = open<AcDbBlockTableRecord>(copyOf(b));
    const ACHAR* name = nullptr;
    copy->getName(name);
    EXPECT_STREQ(name, L"*U0");
    AcDbBlockBegin* begin = nullptr;
    ASSERT_EQ(copy->openBlockBegin(begin), Acad::eOk);
    EXPECT_EQ(begin->ownerId(), copyOf(b));
    begin->close();
    copy->close();
}

TEST_F(DeepClone, ARecordWithANameIsNotCopiedInsideItsDrawing) {
    const AcDbObjectId l = layer(*m_from, L"L", 3);
    EXPECT_EQ(cloneInto(m_from->layerTableId(), {l}), Acad::eDuplicateRecordName);
}

TEST_F(DeepClone, TwoCallsShareOneTranslation) {
    const AcDbObjectId space = modelSpace(*m_from), paper = m_from->core().roots.paperSpace;
    const AcDbObjectId a = entity(space, L"A"), b = entity(space, L"B");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.softPointers = {b}; });
    ASSERT_EQ(m_from->deepCloneObjects(ids({a}), space, m_mapping, true), Acad::eOk);
    EXPECT_EQ(fieldsOf(copyOf(a)).softPointers, (std::vector<AcDbObjectId>{b}));
    ASSERT_EQ(m_from->deepCloneObjects(ids({b}), paper, m_mapping), Acad::eOk);
    EXPECT_EQ(fieldsOf(copyOf(a)).softPointers, (std::vector<AcDbObjectId>{copyOf(b)}));
    EXPECT_EQ(texts(paper), (Texts{L"B"}));
    EXPECT_EQ(copyOf(m_from->layerTableId()), AcDbObjectId());
}

TEST_F(DeepClone, AnObjectThatDoesNotApplyIsLeftOutAndTheOthersAreCloned) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A"), bound = entity(space, L"BOUND"), b = entity(space, L"B");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.softPointers = {bound}; });
    nodeFaults().text = L"BOUND";
    nodeFaults().deepClone = Acad::eNotApplicable;
    ASSERT_EQ(cloneInto(space, {a, bound, b}), Acad::eOk);
    EXPECT_EQ(texts(space), (Texts{L"A", L"BOUND", L"B", L"A", L"B"}));
    EXPECT_TRUE(copyOf(bound).isNull());
    EXPECT_EQ(fieldsOf(copyOf(a)).softPointers, (std::vector<AcDbObjectId>{bound}));
}

TEST_F(DeepClone, WhatIsAskedForTwiceIsClonedOnce) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId a = entity(space, L"A");
    ASSERT_EQ(cloneInto(space, {a, a}), Acad::eOk);
    EXPECT_EQ(texts(space), (Texts{L"A", L"A"}));
}

TEST_F(DeepClone, AChainOfAHundredThousandOwnersIsFollowed) {
    const AcDbObjectId space = modelSpace(*m_from);
    const AcDbObjectId first = entity(space, L"A");
    AcDbObjectId last = first;
    for (int i = 0; i < 100000; ++i)
        last = ownedNode(last, L"n");
    ASSERT_EQ(cloneInto(space, {first}), Acad::eOk);
    EXPECT_FALSE(copyOf(last).isNull());
}

TEST_F(DeepClone, WhatIsRefusedSaysWhy) {
    const AcDbObjectId space = modelSpace(*m_from), other = modelSpace(*m_to);
    const AcDbObjectId a = entity(space, L"A"), foreign = entity(other, L"F");
    const AcDbObjectId erased = entity(space, L"E"), n = node(dictionary(*m_from, {L"D"}), L"N");
    change<CloneEntity>(erased, [](CloneEntity& e) { e.erase(); });
    EXPECT_EQ(m_from->deepCloneObjects(ids({}), space, m_mapping), Acad::eInvalidInput);
    EXPECT_EQ(cloneInto(AcDbObjectId(), {a}), Acad::eNullObjectId);
    EXPECT_EQ(cloneInto(space, {a, AcDbObjectId()}), Acad::eNullObjectId);
    EXPECT_EQ(cloneInto(space, {a, foreign}), Acad::eWrongDatabase);
    EXPECT_EQ(cloneInto(other, {a}), Acad::eWrongDatabase);
    EXPECT_EQ(m_to->deepCloneObjects(ids({a}), space, m_mapping), Acad::eWrongDatabase);
    EXPECT_EQ(cloneInto(space, {a, erased}), Acad::eWasErased);
    EXPECT_EQ(cloneInto(erased, {a}), Acad::eWasErased);
    EXPECT_EQ(cloneInto(space, {n}), Acad::eInvalidOwnerObject);
    EXPECT_EQ(cloneInto(m_from->layerTableId(), {a}), Acad::eInvalidOwnerObject);
    auto* held = open<AcDbBlockTableRecord>(space);
    EXPECT_EQ(cloneInto(space, {a}), Acad::eWasOpenForRead);
    held->close();
    auto* gone = new AcDbDatabase(true);
    const AcDbObjectId dead = modelSpace(*gone);
    delete gone;
    EXPECT_EQ(cloneInto(dead, {a}), Acad::eInvalidInput);
    EXPECT_EQ(cloneInto(space, {dead}), Acad::eInvalidInput);
    EXPECT_EQ(texts(space), (Texts{L"A"}));
}

TEST_F(DeepClone, AnObjectIsNotClonedOutsideOfACloning) {
    const AcDbObjectId space = modelSpace(*m_from), a = entity(space, L"A");
    auto* source = open<CloneEntity>(a);
    auto* owner = open<AcDbBlockTableRecord>(space, AcDb::kForWrite);
    AcDbObject* clone = source;
    EXPECT_EQ(source->deepClone(owner, clone, m_mapping), Acad::eInvalidContext);
    EXPECT_EQ(clone, nullptr);
    owner->close();
    source->close();
}

TEST_F(DeepClone, AMappingServesOneCloning) {
    const AcDbObjectId space = modelSpace(*m_from), a = entity(space, L"A");
    ASSERT_EQ(m_from->deepCloneObjects(ids({a}), space, m_mapping, true), Acad::eOk);
    EXPECT_EQ(m_to->wblockCloneObjects(ids({a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore),
              Acad::eInvalidContext);
    m_from->abortDeepClone(m_mapping);
    EXPECT_EQ(texts(space), (Texts{L"A"}));
}

// What an object does wrong takes all of the cloning back.
class FailingClone : public DeepClone {
protected:
    void SetUp() override {
        DeepClone::SetUp();
        m_space = modelSpace(*m_from);
        m_a = entity(m_space, L"A");
        ownedNode(m_a, L"BAD");
        nodeFaults().text = L"BAD";
        embedded::forgetHistory(*m_from);
        m_before = everything(*m_from);
    }
    void expectNoTrace() {
        nodeFaults() = NodeFaults();
        EXPECT_EQ(difference(everything(*m_from), m_before), L"");
        EXPECT_FALSE(embedded::undo(*m_from)) << "nothing is left to be undone";
        CloneFolder folder;
        std::string error;
        ASSERT_TRUE(embedded::saveDocument(*m_from, folder.file(L"a.dwg"), error)) << error;
        AcDbDatabase again(false);
        ASSERT_EQ(again.readDwgFile(folder.file(L"a.dwg").c_str()), Acad::eOk);
        EXPECT_EQ(difference(everything(again), m_before), L"");
    }

    AcDbObjectId m_space, m_a;
    Texts m_before;
};

TEST_F(FailingClone, AWriterThatFailsLeavesNoTrace) {
    nodeFaults().write = Acad::eDwgObjectImproperlyRead;
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eDwgObjectImproperlyRead);
    expectNoTrace();
}

TEST_F(FailingClone, AReaderThatFailsLeavesNoTrace) {
    nodeFaults().read = Acad::eMakeMeProxy;
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eMakeMeProxy);
    expectNoTrace();
}

TEST_F(FailingClone, AWriterThatThrowsLeavesNoTrace) {
    nodeFaults().throwsOnWrite = true;
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eFilerError);
    expectNoTrace();
}

TEST_F(FailingClone, AnOverrideThatThrowsLeavesNoTraceAndIsPassedOn) {
    nodeFaults().throwsOnClone = true;
    EXPECT_THROW(cloneInto(m_space, {m_a}), std::runtime_error);
    expectNoTrace();
}

TEST_F(FailingClone, AnOverrideThatAnswersAFailureLeavesNoTrace) {
    nodeFaults().deepClone = Acad::eInvalidInput;
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eInvalidInput);
    expectNoTrace();
}

TEST_F(FailingClone, WithoutAHistoryTooNothingIsLeft) {
    m_from->disableUndoRecording(true);
    nodeFaults().write = Acad::eFilerError;
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eFilerError);
    EXPECT_FALSE(m_from->undoRecording());
    expectNoTrace();
}

TEST_F(FailingClone, WhatADeferredCallClonedGoesToo) {
    const AcDbObjectId good = entity(m_space, L"GOOD");
    const Texts before = everything(*m_from);
    ASSERT_EQ(m_from->deepCloneObjects(ids({good}), m_space, m_mapping, true), Acad::eOk);
    nodeFaults().write = Acad::eFilerError;
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eFilerError);
    nodeFaults() = NodeFaults();
    EXPECT_EQ(difference(everything(*m_from), before), L"");
    EXPECT_TRUE(cloneOf(m_mapping, good).isNull());
}

TEST_F(FailingClone, AClassWithoutAMakerIsNotCloned) {
    auto* made = new UnmadeNode;
    AcDbObjectId id;
    ASSERT_EQ(m_from->addAcDbObject(id, made), Acad::eOk);
    made->setOwnerId(m_a);
    made->close();
    change<CloneEntity>(m_a, [&](CloneEntity& e) { e.fields.hardOwned = {id}; });
    EXPECT_EQ(cloneInto(m_space, {m_a}), Acad::eOutOfMemory);
    EXPECT_EQ(texts(m_space), (Texts{L"A"}));
}

using CloneUndo = DeepClone;

TEST_F(CloneUndo, ACloningIsUndoneAndRedoneAsOneStep) {
    const AcDbObjectId space = modelSpace(*m_from), a = entity(space, L"A");
    ownedNode(a, L"owned");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.createExtensionDictionary(); });
    embedded::forgetHistory(*m_from);
    const Texts before = everything(*m_from);
    embedded::beginCommand(*m_from);
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    const Texts after = everything(*m_from);
    EXPECT_NE(after, before);
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(embedded::undo(*m_from));
        EXPECT_EQ(difference(everything(*m_from), before), L"");
        EXPECT_EQ(texts(space), (Texts{L"A"}));
        ASSERT_TRUE(embedded::redo(*m_from));
        EXPECT_EQ(difference(everything(*m_from), after), L"");
        EXPECT_EQ(texts(space), (Texts{L"A", L"A"}));
    }
    EXPECT_FALSE(embedded::redo(*m_from));
}

TEST_F(CloneUndo, AnAbortedTransactionTakesTheClonesBack) {
    const AcDbObjectId space = modelSpace(*m_from), a = entity(space, L"A");
    embedded::forgetHistory(*m_from);
    const Texts before = everything(*m_from);
    m_from->transactionManager()->startTransaction();
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    m_from->transactionManager()->abortTransaction();
    EXPECT_EQ(difference(everything(*m_from), before), L"");
}

TEST_F(CloneUndo, ASourceThatIsBeingWrittenIsClonedAsItStands) {
    const AcDbObjectId space = modelSpace(*m_from), a = entity(space, L"A");
    auto* held = open<CloneEntity>(a, AcDb::kForWrite);
    held->assertWriteEnabled();
    held->fields.text = L"CHANGED";
    ASSERT_EQ(cloneInto(space, {a}), Acad::eOk);
    EXPECT_TRUE(held->isWriteEnabled());
    held->close();
    EXPECT_EQ(texts(space), (Texts{L"CHANGED", L"CHANGED"}));
}

using PlainClone = CloneFixture;

TEST_F(PlainClone, ACopyInNoDatabaseHasTheFieldsAndOwnsNothing) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    change<CloneEntity>(a, [&](CloneEntity& e) {
        e.createExtensionDictionary();
        e.place = AcGePoint3d(1, 2, 3);
    });
    auto* source = open<CloneEntity>(a);
    const std::unique_ptr<CloneEntity> copy(CloneEntity::cast(source->clone()));
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->objectId().isNull());
    EXPECT_EQ(copy->fields.text, L"A");
    EXPECT_EQ(copy->place, AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(copy->extensionDictionary().isNull());
    EXPECT_FALSE(source->extensionDictionary().isNull());
    source->close();
    nodeFaults().text = L"A";
    nodeFaults().write = Acad::eFilerError;
    source = open<CloneEntity>(a);
    EXPECT_EQ(source->clone(), nullptr);
    source->close();
}

TEST_F(PlainClone, TakingOverAnothersContentKeepsIdOwnerAndExtensionDictionary) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), b = entity(modelSpace(*m_from), L"B");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.createExtensionDictionary(); });
    auto* source = open<CloneEntity>(b);
    auto* target = open<CloneEntity>(a, AcDb::kForWrite);
    const AcDbObjectId extension = target->extensionDictionary();
    EXPECT_EQ(target->copyFrom(source), Acad::eOk);
    EXPECT_EQ(target->fields.text, L"B");
    EXPECT_EQ(target->objectId(), a);
    EXPECT_EQ(target->ownerId(), modelSpace(*m_from));
    EXPECT_EQ(target->extensionDictionary(), extension);
    EXPECT_EQ(target->copyFrom(target), Acad::eOk);
    const CloneNode other;
    EXPECT_EQ(target->copyFrom(&other), Acad::eNotThatKindOfClass);
    EXPECT_EQ(target->copyFrom(nullptr), Acad::eNotThatKindOfClass);
    nodeFaults().text = L"B";
    nodeFaults().read = Acad::eFilerError;
    EXPECT_EQ(target->copyFrom(source), Acad::eFilerError);
    EXPECT_EQ(target->fields.text, L"B");
    target->close();
    source->close();
}

} // namespace
