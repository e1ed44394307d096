#include "dbx/cdb/nod_cdb.h"

#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/copy_sync.h"
#include "embedded/session.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

using namespace orv::cdb;
using namespace testing_support;

namespace {

// What a drawing's store is told to do, in the plainest form: groups of keys of positions of bytes.
struct Model {
    std::map<int, std::map<int, std::map<int, std::string>>> groups;
    int position = 0;
    bool touched = false; // the drawing was written to

    void step(CdbReadWriteMode mode) {
        if (mode == kFirstRecord)
            position = 0;
        else if (mode == kNextRecord)
            ++position;
    }
    bool has(int kwh, int kwl) const {
        const auto group = groups.find(kwh);
        return group != groups.end() && group->second.count(kwl) != 0;
    }
    cd_error_t del(int kwh, int kwl) {
        if (kwl < 0) {
            const bool found = groups.erase(kwh) != 0;
            touched = touched || found;
            return found ? CD_ERR_NONE : CD_ERR_NOTFOUND;
        }
        touched = touched || groups.count(kwh) == 0;
        const bool found = groups[kwh].erase(kwl) != 0;
        touched = touched || found;
        return found ? CD_ERR_NONE : CD_ERR_NOTFOUND;
    }
    cd_error_t write(int kwh, int kwl, const std::string& bytes, CdbReadWriteMode mode) {
        step(mode);
        if (mode == kFirstRecord)
            del(kwh, kwl);
        groups[kwh][kwl][position] = bytes;
        touched = true;
        return CD_ERR_NONE;
    }
    cd_error_t read(int kwh, int kwl, std::string& bytes, CdbReadWriteMode mode) {
        if (!has(kwh, kwl))
            return CD_ERR_NOTFOUND;
        step(mode);
        const auto& sequence = groups[kwh][kwl];
        const auto record = sequence.find(position);
        if (record == sequence.end())
            return CD_ERR_NOTFOUND;
        bytes = record->second;
        return CD_ERR_NONE;
    }
    std::set<int> keys(int kwh) const {
        std::set<int> listed;
        const auto group = groups.find(kwh);
        if (group != groups.end())
            for (const auto& key : group->second)
                listed.insert(key.first);
        return listed;
    }
    cd_error_t nextKey(int kwh, int& kwl) const {
        const std::set<int> listed = keys(kwh);
        if (groups.count(kwh) == 0 || listed.empty())
            return CD_ERR_NOTFOUND;
        if (listed.count(kwl) == 0) {
            if (kwl >= *listed.begin())
                return CD_ERR_NOTFOUND;
            kwl = *listed.begin();
            return CD_ERR_NONE;
        }
        const auto next = listed.upper_bound(kwl);
        if (next == listed.end())
            return CD_ERR_NOTFOUND;
        kwl = *next;
        return CD_ERR_NONE;
    }
};

// The model's own copy and sync, in which reading a sequence ends at the first gap.
struct Mover {
    Model& src;
    Model& dst;

    void copy(int kwh, int kwlSrc, int kwlDst) {
        std::string bytes;
        CdbReadWriteMode mode = kFirstRecord;
        cd_error_t err = src.read(kwh, kwlSrc, bytes, kFirstRecord);
        while (err == CD_ERR_NONE) {
            dst.write(kwh, kwlDst, bytes, mode);
            mode = kNextRecord;
            err = src.read(kwh, kwlSrc, bytes, kNextRecord);
        }
    }
    void copyHeader(int kwh, int kwl) {
        std::string bytes;
        if (src.read(kwh, kwl, bytes, kFirstRecord) != CD_ERR_NONE)
            return;
        std::string old;
        if (dst.has(kwh, kwl))
            dst.read(kwh, kwl, old, kFirstRecord);
        dst.write(kwh, kwl, bytes, kFirstRecord);
    }
    void copyChanged(int kwh, int kwl, UpdateNos& memory) {
        const bool known = memory.count({kwh, kwl}) != 0 && memory[{kwh, kwl}] == -1;
        if (!known)
            copy(kwh, kwl, kwl);
        memory[{kwh, kwl}] = -1;
    }
    static std::set<int> inRange(const std::set<int>& keys, int from, int to) {
        std::set<int> kept;
        for (int key : keys)
            if (from <= key && key <= to)
                kept.insert(key);
        return kept;
    }
    void dropStale(int kwh, const std::set<int>& srcKeys, const std::set<int>& dstKeys, bool wholeGroup) {
        std::set<int> stale;
        for (int key : dstKeys)
            if (srcKeys.count(key) == 0)
                stale.insert(key);
        if (!stale.empty() && wholeGroup && stale.size() == dstKeys.size())
            dst.del(kwh, -1);
        else
            for (int key : stale)
                dst.del(kwh, key);
    }
};

using Groups = decltype(Model::groups);

// The whole of a store, read past the store's own class.
Groups contentOf(AcDbObjectId base) {
    Groups found;
    for (const std::wstring& kwh : namesOf(base)) {
        const AcDbObjectId group = entryOf(base, kwh.c_str());
        auto& keys = found[std::stoi(kwh)];
        for (const std::wstring& kwl : namesOf(group)) {
            const AcDbObjectId key = entryOf(group, kwl.c_str());
            auto& sequence = keys[std::stoi(kwl)];
            for (const std::wstring& position : namesOf(key)) {
                orv::ORV_CdbRecord* record = nullptr;
                if (acdbOpenObject(record, entryOf(key, position.c_str()), AcDb::kForRead) != Acad::eOk)
                    continue;
                sequence[std::stoi(position)] =
                    std::string(static_cast<const char*>(record->getDataPtr()), record->getDataSize());
                record->close();
            }
        }
    }
    return found;
}

std::string anyBytes() {
    return *rc::gen::container<std::string>(*rc::gen::inRange<std::size_t>(1, 9), rc::gen::arbitrary<char>());
}

CdbReadWriteMode anyMode() {
    return static_cast<CdbReadWriteMode>(
        *rc::gen::element<int>(kFirstRecord, kFirstRecord, kNextRecord, kNextRecord, kSameRecord, 42));
}

int anyKwh() { return *rc::gen::inRange(0, 3); }
int anyKwl() { return *rc::gen::inRange(0, 6); }

std::pair<int, int> anyRange() {
    const int one = anyKwl();
    const int other = anyKwl();
    return std::minmax(one, other);
}

// Takes the way of a store of another class, which has its own `del` and listing.
struct Derived : NodCdb {
    using NodCdb::NodCdb;
};

// Two stores of one drawing beside their models. Each operation is done to both and its answers are compared.
class Twins {
public:
    Twins() : m_drawing(L"ONE") {
        subDictionary(subDictionary(m_drawing.kelmoran, L"TWO"), L"CDBASE");
        for (int i = 0; i < 2; ++i) {
            m_stores.emplace_back(i == 0 ? new NodCdb(&m_drawing.db) : new Derived(&m_drawing.db));
            m_stores[i]->open(i == 0 ? L"ONE" : L"TWO", kSharedLocking);
            m_bases[i] = entryAt(m_drawing.kelmoran, {i == 0 ? L"ONE" : L"TWO", L"CDBASE"});
        }
        beginCommand();
    }

    void operate() {
        static const std::vector<void (Twins::*)()> kOperations = {
            &Twins::write,          &Twins::write,      &Twins::write,     &Twins::read,
            &Twins::read,           &Twins::del,        &Twins::nextKey,   &Twins::list,
            &Twins::copyKey,        &Twins::copyOther,  &Twins::copyGroup, &Twins::copyARange,
            &Twins::copyAHeader,    &Twins::copyKnown,  &Twins::syncGroup, &Twins::syncKnown,
            &Twins::syncRangeKnown, &Twins::syncARange, &Twins::syncHead,  &Twins::syncHeadRange,
            &Twins::delARange,      &Twins::command,    &Twins::undo};
        const auto operation = *rc::gen::elementOf(kOperations);
        m_side = *rc::gen::inRange(0, 2);
        (this->*operation)();
    }

    void check() {
        for (int i = 0; i < 2; ++i) {
            RC_ASSERT(contentOf(m_bases[i]) == m_models[i].groups);
            RC_ASSERT(m_memory[i] == m_modelMemory[i]);
        }
    }

private:
    NodCdb& store() { return *m_stores[m_side]; }
    NodCdb& other() { return *m_stores[1 - m_side]; }
    Model& model() { return m_models[m_side]; }
    Mover mover() { return {m_models[m_side], m_models[1 - m_side]}; }
    UpdateNos& memory() { return m_memory[m_side]; }
    UpdateNos& modelMemory() { return m_modelMemory[m_side]; }

    void write() {
        const int kwh = anyKwh();
        const int kwl = anyKwl();
        const std::string bytes = anyBytes();
        const CdbReadWriteMode mode = anyMode();
        RC_ASSERT(store().write(kwh, kwl, bytes.data(), bytes.size(), mode) ==
                  model().write(kwh, kwl, bytes, mode));
    }
    void read() {
        const int kwh = anyKwh();
        const int kwl = anyKwl();
        const CdbReadWriteMode mode = anyMode();
        char buffer[32];
        std::size_t len = sizeof buffer;
        std::string expected;
        const cd_error_t err = store().read(kwh, kwl, buffer, len, mode);
        RC_ASSERT(err == model().read(kwh, kwl, expected, mode));
        if (err == CD_ERR_NONE)
            RC_ASSERT(std::string(buffer, len) == expected);
    }
    void del() {
        const int kwh = anyKwh();
        const int kwl = *rc::gen::inRange(-1, 6);
        RC_ASSERT(store().del(kwh, kwl) == model().del(kwh, kwl));
    }
    void nextKey() {
        int kwh = anyKwh();
        int kwl = *rc::gen::inRange(-1, 6);
        int expected = kwl;
        RC_ASSERT(store().getNextKey(kwh, kwl) == model().nextKey(kwh, expected));
        RC_ASSERT(kwl == expected);
    }
    void list() {
        const int kwh = anyKwh();
        const auto range = anyRange();
        const cd_error_t expected = model().groups.count(kwh) != 0 ? CD_ERR_NONE : CD_ERR_NOTFOUND;
        std::set<int> all;
        std::set<int> some;
        RC_ASSERT(store().getKeysForKwh(kwh, all) == expected);
        RC_ASSERT(store().getKeysForKwhAndRange(kwh, some, range.first, range.second) == expected);
        RC_ASSERT(all == model().keys(kwh));
        RC_ASSERT(some == Mover::inRange(all, range.first, range.second));
        for (int kwl = 0; kwl < 6; ++kwl)
            RC_ASSERT(store().exists(kwh, kwl) == model().has(kwh, kwl));
    }
    void copyKey() {
        const int kwh = anyKwh();
        const int kwl = anyKwl();
        copy(store(), other(), kwh, kwl);
        mover().copy(kwh, kwl, kwl);
    }
    void copyOther() {
        const int kwh = anyKwh();
        const int from = anyKwl();
        const int to = anyKwl();
        copy(store(), other(), kwh, from, to);
        mover().copy(kwh, from, to);
    }
    void copyGroup() {
        const int kwh = anyKwh();
        copy(store(), other(), kwh);
        for (int kwl : model().keys(kwh))
            mover().copy(kwh, kwl, kwl);
    }
    void copyARange() {
        const int kwh = anyKwh();
        const auto range = anyRange();
        copyRange(store(), other(), kwh, range.first, range.second);
        for (int kwl : Mover::inRange(model().keys(kwh), range.first, range.second))
            mover().copy(kwh, kwl, kwl);
    }
    void copyAHeader() {
        const int kwh = anyKwh();
        const int kwl = anyKwl();
        copyHeader(store(), other(), kwh, kwl);
        mover().copyHeader(kwh, kwl);
    }
    void copyKnown() {
        const int kwh = anyKwh();
        copy(store(), other(), kwh, memory());
        for (int kwl : model().keys(kwh))
            mover().copyChanged(kwh, kwl, modelMemory());
    }
    void syncGroup() {
        const int kwh = anyKwh();
        sync(store(), other(), kwh);
        const std::set<int> keys = model().keys(kwh);
        mover().dropStale(kwh, keys, mover().dst.keys(kwh), true);
        for (int kwl : keys)
            mover().copy(kwh, kwl, kwl);
    }
    void syncKnown() {
        const int kwh = anyKwh();
        sync(store(), other(), kwh, memory());
        const std::set<int> keys = model().keys(kwh);
        mover().dropStale(kwh, keys, mover().dst.keys(kwh), true);
        for (int kwl : keys)
            mover().copyChanged(kwh, kwl, modelMemory());
    }
    void syncRangeKnown() {
        const int kwh = anyKwh();
        const auto range = anyRange();
        sync(store(), other(), kwh, range.first, range.second, memory());
        const std::set<int> keys = Mover::inRange(model().keys(kwh), range.first, range.second);
        mover().dropStale(kwh, keys, Mover::inRange(mover().dst.keys(kwh), range.first, range.second), true);
        for (int kwl : keys)
            mover().copyChanged(kwh, kwl, modelMemory());
    }
    void syncARange() {
        const int kwh = anyKwh();
        const auto range = anyRange();
        syncRange(store(), other(), kwh, range.first, range.second);
        const std::set<int> keys = Mover::inRange(model().keys(kwh), range.first, range.second);
        mover().dropStale(kwh, keys, Mover::inRange(mover().dst.keys(kwh), range.first, range.second), false);
        for (int kwl : keys)
            mover().copy(kwh, kwl, kwl);
    }
    void syncHead() {
        const int kwh = anyKwh();
        syncHeader(store(), other(), kwh);
        const std::set<int> keys = model().keys(kwh);
        mover().dropStale(kwh, keys, mover().dst.keys(kwh), true);
        for (int kwl : keys)
            mover().copyHeader(kwh, kwl);
    }
    void syncHeadRange() {
        const int kwh = anyKwh();
        const auto range = anyRange();
        syncHeaderRange(store(), other(), kwh, range.first, range.second);
        const std::set<int> keys = Mover::inRange(model().keys(kwh), range.first, range.second);
        mover().dropStale(kwh, keys, Mover::inRange(mover().dst.keys(kwh), range.first, range.second), false);
        for (int kwl : keys)
            mover().copyHeader(kwh, kwl);
    }
    void delARange() {
        const int kwh = anyKwh();
        const auto range = anyRange();
        delRange(store(), kwh, range.first, range.second);
        for (int kwl : Mover::inRange(model().keys(kwh), range.first, range.second))
            model().del(kwh, kwl);
    }

    // A step of the history is kept only if something was written in it.
    bool touched() const { return m_models[0].touched || m_models[1].touched; }
    void beginCommand() {
        embedded::beginCommand(m_drawing.db);
        m_before = {m_models[0].groups, m_models[1].groups};
        m_models[0].touched = m_models[1].touched = false;
    }
    void command() {
        if (touched())
            m_history.push_back(m_before);
        beginCommand();
    }
    void undo() {
        command();
        if (m_history.empty())
            return;
        const std::array<Groups, 2> present = {m_models[0].groups, m_models[1].groups};
        RC_ASSERT(embedded::undo(m_drawing.db));
        takeBack(m_history.back());
        if (*rc::gen::arbitrary<bool>()) {
            check();
            RC_ASSERT(embedded::redo(m_drawing.db));
            takeBack(present);
        } else {
            m_history.pop_back();
        }
        beginCommand();
    }
    void takeBack(const std::array<Groups, 2>& groups) {
        for (int i = 0; i < 2; ++i)
            m_models[i].groups = groups[i];
    }

    StoreDrawing m_drawing;
    std::vector<std::unique_ptr<NodCdb>> m_stores;
    AcDbObjectId m_bases[2];
    Model m_models[2];
    UpdateNos m_memory[2];
    UpdateNos m_modelMemory[2];
    std::vector<std::array<Groups, 2>> m_history;
    std::array<Groups, 2> m_before;
    int m_side = 0;
};

} // namespace

RC_GTEST_PROP(NodCdbProperty, FollowsAPlainMapThroughAnyOperationsAndUndo, ()) {
    ReportRecorder recorder;
    Twins twins;
    const int length = *rc::gen::inRange(1, 60);
    for (int i = 0; i < length; ++i) {
        twins.operate();
        twins.check();
    }
    // None of these operations breaks an expectation.
    RC_ASSERT(recorder.size() == 0u);
}
