#include "rxclass.h"
#include "rxdict.h"
#include "rxregsvc.h"
#include "rxsrvice.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class Counted : public AcRxService {
public:
    explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
    ~Counted() override { --m_alive; }

private:
    int& m_alive;
};

std::wstring keys(AcRxDictionary& dictionary, AcRx::DictIterType type) {
    std::wstring all;
    const std::unique_ptr<AcRxDictionaryIterator> at(dictionary.newIterator(type));
    for (; !at->done(); at->next()) {
        all += std::wstring(at->key()) + L" ";
        EXPECT_EQ(dictionary.at(at->id()), at->object());
    }
    return all;
}

class RxDictionary : public testing::Test {
protected:
    void SetUp() override { acrxSysRegistry(); }

    AcRxService m_one;
    AcRxService m_two;
    Adesk::UInt32 m_id = 0;
    const std::unique_ptr<AcRxDictionary> m_dictionary{acrxNewDictionary()};
};

TEST_F(RxDictionary, ByNameAndByNumber) {
    EXPECT_EQ(m_dictionary->atPut(L"b", &m_one, m_id), nullptr);
    EXPECT_EQ(m_id, 1u);
    EXPECT_EQ(m_dictionary->atPut(L"a", &m_two, m_id), nullptr);
    EXPECT_EQ(m_id, 2u);
    EXPECT_EQ(m_dictionary->at(L"b"), &m_one);
    EXPECT_EQ(m_dictionary->at(2u), &m_two);
    EXPECT_EQ(m_dictionary->idAt(L"a"), 2u);
    EXPECT_STREQ(m_dictionary->keyAt(1u), L"b");
    EXPECT_EQ(m_dictionary->at(L"c"), nullptr);
    EXPECT_EQ(m_dictionary->idAt(L"c"), 0u);
    EXPECT_EQ(m_dictionary->keyAt(7u), nullptr);
    EXPECT_EQ(m_dictionary->numEntries(), 2u);
}

TEST_F(RxDictionary, WalksByNameAndInTheOrderOfComing) {
    for (const wchar_t* key : {L"b", L"c", L"a"})
        m_dictionary->atPut(key, &m_one, m_id);
    EXPECT_EQ(keys(*m_dictionary, AcRx::kDictSorted), L"a b c ");
    EXPECT_EQ(keys(*m_dictionary, AcRx::kDictCollated), L"b c a ");
}

TEST_F(RxDictionary, EntriesMayGoDuringAWalk) {
    for (const wchar_t* key : {L"a", L"b", L"c"})
        m_dictionary->atPut(key, &m_one, m_id);
    const std::unique_ptr<AcRxDictionaryIterator> at(m_dictionary->newIterator());
    m_dictionary->remove(L"b");
    EXPECT_TRUE(at->next());
    EXPECT_STREQ(at->key(), L"c");
    m_dictionary->remove(L"c");
    EXPECT_EQ(at->object(), nullptr);
    EXPECT_FALSE(at->next());
    EXPECT_TRUE(at->done());
    EXPECT_EQ(at->key(), nullptr);
}

TEST_F(RxDictionary, PuttingAgainGivesTheOldObjectBack) {
    m_dictionary->atPut(L"a", &m_one, m_id);
    EXPECT_EQ(m_dictionary->atPut(L"a", &m_two, m_id), &m_one);
    EXPECT_EQ(m_id, 1u);
    EXPECT_EQ(m_dictionary->atPut(1u, &m_one), &m_two);
    EXPECT_EQ(m_dictionary->atPut(9u, &m_one), nullptr);
    EXPECT_FALSE(m_dictionary->has(9u));
}

TEST_F(RxDictionary, RemovesAndRenames) {
    m_dictionary->atPut(L"a", &m_one, m_id);
    m_dictionary->atPut(L"b", &m_two, m_id);
    EXPECT_FALSE(m_dictionary->resetKey(L"a", L"b"));
    EXPECT_TRUE(m_dictionary->resetKey(L"a", L"c"));
    EXPECT_EQ(m_dictionary->at(L"a"), nullptr);
    EXPECT_EQ(m_dictionary->at(L"c"), &m_one);
    EXPECT_EQ(m_dictionary->remove(L"c"), &m_one);
    EXPECT_EQ(m_dictionary->remove(L"c"), nullptr);
    EXPECT_EQ(m_dictionary->remove(2u), &m_two);
    m_dictionary->atPut(L"a", &m_one, m_id);
    EXPECT_EQ(m_id, 3u);
}

TEST_F(RxDictionary, CaseCountsOnlyIfAsked) {
    m_dictionary->atPut(L"a", &m_one, m_id);
    EXPECT_FALSE(m_dictionary->has(L"A"));
    const std::unique_ptr<AcRxDictionary> loose(acrxNewDictionary(false));
    loose->atPut(L"Ab", &m_one, m_id);
    EXPECT_TRUE(loose->has(L"aB"));
    loose->atPut(L"AB", &m_two, m_id);
    EXPECT_EQ(loose->numEntries(), 1u);
    EXPECT_STREQ(loose->keyAt(m_id), L"Ab");
}

TEST_F(RxDictionary, DeletesItsObjectsIfItOwnsThem) {
    int alive = 0;
    {
        const std::unique_ptr<AcRxDictionary> owner(acrxNewDictionary(true, true));
        owner->atPut(L"a", new Counted(alive), m_id);
        owner->atPut(L"b", new Counted(alive), m_id);
        EXPECT_EQ(owner->atPut(L"a", new Counted(alive), m_id), nullptr);
        EXPECT_EQ(alive, 2);
        EXPECT_EQ(owner->remove(L"b"), nullptr);
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST_F(RxDictionary, SystemRegistryHoldsTheHostsObjects) {
    EXPECT_EQ(acrxClassDictionary->at(L"AcRxDictionary"), AcRxDictionary::desc());
    EXPECT_NE(acrxServiceDictionary, nullptr);
    EXPECT_TRUE(acrxSysRegistry()->has(ACRX_DYNAMIC_LINKER));
}

TEST_F(RxDictionary, ServicesCountTheirDependencies) {
    static int calls = 0;
    AcRxService* service = acrxRegisterService(L"RxTestService");
    EXPECT_EQ(acrxRegisterService(L"RxTestService"), service);
    EXPECT_EQ(acrxServiceIsRegistered(L"RxTestService"), service);
    EXPECT_EQ(acrxServiceIsRegistered(L"RxNoService"), nullptr);
    service->attachTo([](void*) { return calls += 1, AcRx::kRetOK; },
                      [](void*) { return calls += 10, AcRx::kRetOK; });
    service->addDependency();
    service->addDependency();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(service->unloadAllowed());
    service->removeDependency();
    EXPECT_EQ(calls, 1);
    service->removeDependency();
    service->removeDependency();
    EXPECT_EQ(calls, 11);
    EXPECT_TRUE(service->unloadAllowed());
}

} // namespace
