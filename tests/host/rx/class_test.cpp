#include "embedded/abort.h"
#include "embedded/classes.h"
#include "embedded/host_start.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxdlinkr.h"

#include <gtest/gtest.h>

#include <stdexcept>

class RxTestBase : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(RxTestBase);
};
class RxTestMiddle : public RxTestBase {
public:
    ACRX_DECLARE_MEMBERS(RxTestMiddle);
};
class RxTestLeaf : public RxTestMiddle {
public:
    ACRX_DECLARE_MEMBERS(RxTestLeaf);
};
class RxTestOther : public RxTestBase {
public:
    ACRX_DECLARE_MEMBERS(RxTestOther);
};
class RxTestMismatch : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(RxTestMismatch);
};

ACRX_NO_CONS_DEFINE_MEMBERS(RxTestBase, AcRxObject)
ACRX_CONS_DEFINE_MEMBERS(RxTestMiddle, RxTestBase, 1)
ACRX_DXF_DEFINE_MEMBERS(RxTestLeaf, RxTestMiddle, 21, 126, 3, RX_LEAF, RX_TEST_APP)
ACRX_NO_CONS_DEFINE_MEMBERS(RxTestOther, RxTestBase)
ACRX_NO_CONS_DEFINE_MEMBERS(RxTestMismatch, AcRxObject)

namespace {

class Classes : public testing::Test {
protected:
    static void SetUpTestSuite() {
        embedded::startHost();
        // The youngest first: parents may come later.
        RxTestLeaf::rxInit();
        RxTestMiddle::rxInit();
        RxTestOther::rxInit();
        RxTestBase::rxInit();
    }
    void SetUp() override {
        embedded::setAbortHandler(
            [this](const std::wstring& text) { m_aborted = text, throw std::runtime_error("aborted"); });
    }
    void TearDown() override { embedded::setAbortHandler({}); }

    std::wstring m_aborted;
};

TEST_F(Classes, DerivationHoldsBeforeTheHierarchyIsBuilt) {
    EXPECT_TRUE(RxTestLeaf::desc()->isDerivedFrom(RxTestBase::desc()));
    EXPECT_TRUE(RxTestLeaf::desc()->isDerivedFrom(AcRxObject::desc()));
    EXPECT_TRUE(RxTestLeaf::desc()->isDerivedFrom(RxTestLeaf::desc()));
    EXPECT_FALSE(RxTestLeaf::desc()->isDerivedFrom(RxTestOther::desc()));
    EXPECT_FALSE(RxTestMiddle::desc()->isDerivedFrom(RxTestLeaf::desc()));
    EXPECT_FALSE(RxTestLeaf::desc()->isDerivedFrom(nullptr));
    EXPECT_EQ(RxTestLeaf::desc()->myParent(), RxTestMiddle::desc());
    EXPECT_EQ(AcRxObject::desc()->myParent(), nullptr);
}

TEST_F(Classes, CastsByRunTimeClass) {
    RxTestLeaf leaf;
    const AcRxObject* object = &leaf;
    EXPECT_EQ(leaf.isA(), RxTestLeaf::desc());
    EXPECT_TRUE(leaf.isKindOf(RxTestMiddle::desc()));
    EXPECT_EQ(RxTestMiddle::cast(object), &leaf);
    EXPECT_EQ(AcRxObject::cast(object), &leaf);
    EXPECT_EQ(RxTestOther::cast(object), nullptr);
    EXPECT_EQ(RxTestLeaf::cast(nullptr), nullptr);
}

TEST_F(Classes, DescriptorTellsWhatWasRegistered) {
    AcRxClass* leaf = RxTestLeaf::desc();
    EXPECT_STREQ(leaf->name(), L"RxTestLeaf");
    EXPECT_STREQ(leaf->dxfName(), L"RX_LEAF");
    EXPECT_STREQ(leaf->appName(), L"RX_TEST_APP");
    EXPECT_EQ(leaf->proxyFlags(), 3u);
    int version = 0;
    int maintenance = 0;
    leaf->getClassVersion(version, maintenance);
    EXPECT_EQ(version, 21);
    EXPECT_EQ(maintenance, 126);
    EXPECT_EQ(RxTestMiddle::desc()->dxfName(), nullptr);
    EXPECT_EQ(RxTestMiddle::desc()->appName(), nullptr);
    EXPECT_EQ(acrxClassDictionary->at(L"RxTestLeaf"), leaf);
}

TEST_F(Classes, MakesObjects) {
    const std::unique_ptr<AcRxObject> made(RxTestLeaf::desc()->create());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), RxTestLeaf::desc());
    EXPECT_EQ(RxTestBase::desc()->create(), nullptr);
}

TEST_F(Classes, SecondRxInitFindsItselfAndDoesNothing) {
    const unsigned before = embedded::rx::classGeneration();
    AcRxClass* descriptor = RxTestLeaf::desc();
    RxTestLeaf::rxInit();
    EXPECT_EQ(RxTestLeaf::desc(), descriptor);
    EXPECT_EQ(embedded::rx::classGeneration(), before);
}

TEST_F(Classes, AnotherDescriptorUnderTheNameAborts) {
    RxTestMismatch::rxInit();
    Adesk::UInt32 id = 0;
    AcRxObject* own = acrxClassDictionary->atPut(L"RxTestMismatch", RxTestLeaf::desc(), id);
    EXPECT_THROW(RxTestMismatch::rxInit(), std::runtime_error);
    EXPECT_EQ(m_aborted, L"Class mismatch");
    acrxClassDictionary->atPut(L"RxTestMismatch", own, id);
    RxTestMismatch::rxInit();
}

TEST_F(Classes, RegisteredAgainGetsTheSameDescriptor) {
    AcRxClass* first = newAcRxClass(L"RxTestAgain", L"RxTestBase", 21, 1, 0, nullptr, L"ONE", L"APP");
    EXPECT_TRUE(first->isDerivedFrom(RxTestBase::desc()));
    deleteAcRxClass(first);
    EXPECT_EQ(acrxClassDictionary->at(L"RxTestAgain"), nullptr);
    AcRxClass* second = newAcRxClass(L"RxTestAgain", L"RxTestMiddle", 22, 2, 7, nullptr, L"TWO");
    EXPECT_EQ(second, first);
    EXPECT_EQ(acrxClassDictionary->at(L"RxTestAgain"), first);
    EXPECT_STREQ(second->dxfName(), L"TWO");
    EXPECT_EQ(second->appName(), nullptr);
    EXPECT_EQ(second->proxyFlags(), 7u);
    EXPECT_TRUE(second->isDerivedFrom(RxTestMiddle::desc()));
    deleteAcRxClass(second);
}

TEST_F(Classes, NewParentCountsForThoseBelowToo) {
    AcRxClass* upper = newAcRxClass(L"RxTestUpper", L"RxTestBase");
    AcRxClass* lower = newAcRxClass(L"RxTestLower", L"RxTestUpper");
    EXPECT_FALSE(lower->isDerivedFrom(RxTestMiddle::desc()));
    newAcRxClass(L"RxTestUpper", L"RxTestMiddle");
    EXPECT_TRUE(lower->isDerivedFrom(RxTestMiddle::desc()));
    EXPECT_TRUE(lower->isDerivedFrom(upper));
}

TEST_F(Classes, AnUnknownParentIsNoParentUntilItComes) {
    AcRxClass* orphan = newAcRxClass(L"RxTestOrphan", L"RxTestComesLater");
    acrxBuildClassHierarchy();
    EXPECT_EQ(orphan->myParent(), nullptr);
    EXPECT_FALSE(orphan->isDerivedFrom(AcRxObject::desc()));
    EXPECT_TRUE(orphan->isDerivedFrom(orphan));
    AcRxClass* parent = newAcRxClass(L"RxTestComesLater", L"AcRxObject");
    EXPECT_EQ(orphan->myParent(), parent);
    EXPECT_TRUE(orphan->isDerivedFrom(AcRxObject::desc()));
}

TEST_F(Classes, ParentsInACircleAreNoParents) {
    AcRxClass* one = newAcRxClass(L"RxTestCircleOne", L"RxTestCircleTwo");
    AcRxClass* two = newAcRxClass(L"RxTestCircleTwo", L"RxTestCircleOne");
    EXPECT_FALSE(one->isDerivedFrom(two));
    EXPECT_FALSE(two->isDerivedFrom(AcRxObject::desc()));
}

TEST_F(Classes, BuildsOfTheHierarchyAreCounted) {
    const unsigned before = embedded::rx::hierarchyBuilds();
    acrxBuildClassHierarchy();
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), before + 1);
}

TEST_F(Classes, UseOfAnUnregisteredClassAborts) {
    EXPECT_THROW(embedded::rx::registeredClass(L"RxTestNowhere"), std::runtime_error);
    EXPECT_NE(m_aborted.find(L"RxTestNowhere"), std::wstring::npos);
}

TEST_F(Classes, CallbackIsKept) {
    const AppNameChangeFuncPtr callback = [](const AcRxClass*, wchar_t*&, int) {};
    AcRxClass* made =
        newAcRxClass(L"RxTestCallback", L"AcRxObject", 0, 0, 0, nullptr, nullptr, nullptr, callback);
    EXPECT_EQ(made->appNameCallbackPtr(), callback);
    EXPECT_EQ(RxTestLeaf::desc()->appNameCallbackPtr(), nullptr);
}

TEST_F(Classes, QuotesAroundNamesAreTakenOff) {
    AcRxClass* made =
        newAcRxClass(L"RxTestQuoted", L"AcRxObject", 0, 0, 0, nullptr, L"\"DXF\"", L"\"Some App\"");
    EXPECT_STREQ(made->dxfName(), L"DXF");
    EXPECT_STREQ(made->appName(), L"Some App");
}

TEST_F(Classes, ProtocolExtensionsAreInherited) {
    RxTestOther extension;
    AcRxClass* protocol = RxTestOther::desc();
    EXPECT_EQ(RxTestBase::desc()->addX(protocol, &extension), nullptr);
    RxTestLeaf leaf;
    EXPECT_EQ(leaf.queryX(protocol), &extension);
    EXPECT_EQ(leaf.x(protocol), &extension);
    EXPECT_EQ(RxTestLeaf::desc()->getX(protocol), nullptr);
    EXPECT_EQ(RxTestBase::desc()->getX(protocol), &extension);
    RxTestOther nearer;
    RxTestMiddle::desc()->addX(protocol, &nearer);
    EXPECT_EQ(leaf.queryX(protocol), &nearer);
    EXPECT_EQ(RxTestMiddle::desc()->delX(protocol), &nearer);
    EXPECT_EQ(RxTestBase::desc()->delX(protocol), &extension);
    EXPECT_EQ(leaf.queryX(protocol), nullptr);
}

TEST_F(Classes, CompareByName) {
    EXPECT_EQ(RxTestBase::desc()->comparedTo(RxTestLeaf::desc()), AcRx::kLessThan);
    EXPECT_EQ(RxTestBase::desc()->comparedTo(RxTestBase::desc()), AcRx::kEqual);
    RxTestOther other;
    EXPECT_EQ(RxTestBase::desc()->comparedTo(&other), AcRx::kNotOrderable);
}

} // namespace
