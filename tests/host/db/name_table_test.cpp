#include "db/name_table.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

using embedded::NameKey;
using embedded::NameTable;

namespace {

// The same operations on a plain list.
struct Model {
    std::vector<std::pair<std::wstring, AcDbStub*>> entries;
    std::size_t find(const std::wstring& name) const {
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (entries[i].first == name)
                return i;
        return NameTable::kNone;
    }
};

RC_GTEST_PROP(NameTable, AgreesWithAPlainList, ()) {
    static std::vector<AcDbStub> stubs(400);
    NameTable table;
    Model model;
    const auto steps = *rc::gen::container<std::vector<int>>(1000, rc::gen::inRange(0, 100000));
    for (int step : steps) {
        const std::wstring name = std::to_wstring(step % 90);
        const NameKey key(name.c_str());
        AcDbStub* stub = &stubs[static_cast<std::size_t>(step % 400)];
        const std::size_t there = model.find(name);
        RC_ASSERT((table.find(key) == NameTable::kNone) == (there == NameTable::kNone));
        if (there == NameTable::kNone && table.find(stub) == NameTable::kNone) {
            table.append(key.text(), key.hash(), stub);
            model.entries.emplace_back(name, stub);
        } else if (there != NameTable::kNone && step % 3 != 0) {
            table.remove(table.find(key));
            model.entries.erase(model.entries.begin() + static_cast<std::ptrdiff_t>(there));
        }
        RC_ASSERT(table.size() == model.entries.size());
    }
    std::size_t at = 0;
    for (std::size_t slot = 0; slot < table.slots(); ++slot) {
        if (!table.at(slot).live)
            continue;
        RC_ASSERT(embedded::wideName(table.at(slot).name) == model.entries[at].first);
        RC_ASSERT(table.at(slot).stub == model.entries[at].second);
        RC_ASSERT(table.find(model.entries[at].second) == slot);
        ++at;
    }
    RC_ASSERT(at == model.entries.size());
}

TEST(NameTable, AnEntryGoesBackToItsPlaceAfterACleanUp) {
    NameTable table;
    std::vector<AcDbStub> stubs(100);
    for (std::size_t i = 0; i < stubs.size(); ++i) {
        const NameKey key(std::to_wstring(i).c_str());
        table.append(key.text(), key.hash(), &stubs[i]);
    }
    const std::uint32_t order = table.at(50).order;
    for (std::size_t i = 10; i < 90; ++i)
        table.remove(table.find(NameKey(std::to_wstring(i).c_str())));
    EXPECT_LT(table.slots(), 100u) << "gaps have been cleaned up";
    table.insert("50", &stubs[50], order);
    const std::size_t slot = table.find(NameKey(L"50"));
    ASSERT_NE(slot, NameTable::kNone);
    std::size_t before = slot - 1;
    while (!table.at(before).live)
        --before;
    std::size_t after = slot + 1;
    while (!table.at(after).live)
        ++after;
    EXPECT_EQ(table.at(before).name, "9");
    EXPECT_EQ(table.at(after).name, "90");
    EXPECT_EQ(table.find(&stubs[50]), slot);
}

TEST(NameKey, LettersBeyondAsciiIgnoreCaseToo) {
    EXPECT_TRUE(embedded::sameName(NameKey(L"ÄÖÜ Ж Ω").text(), NameKey(L"äöü ж ω").text()));
    EXPECT_EQ(NameKey(L"ÄÖÜ").hash(), NameKey(L"äöü").hash());
    EXPECT_FALSE(embedded::sameName(NameKey(L"A").text(), NameKey(L"Ä").text()));
    EXPECT_FALSE(embedded::sameName(NameKey(L"A").text(), NameKey(L"AB").text()));
}

} // namespace
