#pragma once

#include "dbx/cdb/icdb.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

// A store in memory that follows the contract of a record store. Counts updates if asked to, refuses what it
// is told to refuse, and keeps a log of its calls: "read 10/0 first", "del 10/-1" and so on.
struct MapCdb : orv::cdb::ICdb {
    using Key = std::pair<int, int>;
    using Record = std::vector<unsigned char>;

    std::map<int, std::map<int, std::map<int, Record>>> groups;
    bool opened = true;
    bool counting = false;
    bool refuseWrites = false;
    std::map<Key, bool> refusedLocks;
    mutable int position = 0;
    mutable std::vector<std::string> log;

    static std::string text(int kwh, int kwl) { return std::to_string(kwh) + "/" + std::to_string(kwl); }
    static const char* text(orv::cdb::CdbReadWriteMode mode) {
        return mode == orv::cdb::kFirstRecord ? " first" : mode == orv::cdb::kNextRecord ? " next" : " same";
    }

    // Puts a sequence under a key, past the log.
    void put(int kwh, int kwl, const std::vector<std::string>& records) {
        auto& sequence = groups[kwh][kwl];
        sequence.clear();
        int at = 0;
        for (const std::string& record : records)
            sequence[at++] = Record(record.begin(), record.end());
        ++m_updates[{kwh, kwl}];
    }
    std::vector<std::string> get(int kwh, int kwl) const {
        std::vector<std::string> records;
        const auto group = groups.find(kwh);
        if (group == groups.end() || group->second.count(kwl) == 0)
            return records;
        for (const auto& record : group->second.at(kwl))
            records.emplace_back(record.second.begin(), record.second.end());
        return records;
    }

    orv::cdb::cd_error_t open(const std::wstring&, orv::cdb::CdbLockMode) override {
        opened = true;
        return orv::cdb::CD_ERR_NONE;
    }
    bool isOpen() const override { return opened; }
    orv::cdb::cd_error_t close() override {
        opened = false;
        return orv::cdb::CD_ERR_NONE;
    }
    orv::cdb::cd_error_t getNextKey(int& kwh, int& kwl) const override {
        std::set<int> keys;
        const orv::cdb::cd_error_t err = getKeysForKwh(kwh, keys);
        return err == orv::cdb::CD_ERR_NONE ? orv::cdb::detail::stepKey(keys, kwl) : err;
    }
    orv::cdb::cd_error_t getKeysForKwh(int kwh, std::set<int>& keys) const override {
        const auto group = groups.find(kwh);
        if (group == groups.end())
            return orv::cdb::CD_ERR_NOTFOUND;
        for (const auto& key : group->second)
            keys.insert(key.first);
        return orv::cdb::CD_ERR_NONE;
    }
    orv::cdb::cd_error_t getKeysForKwhAndRange(int kwh, std::set<int>& keys, int from,
                                               int to) const override {
        const auto group = groups.find(kwh);
        if (group == groups.end())
            return orv::cdb::CD_ERR_NOTFOUND;
        for (const auto& key : group->second)
            if (from <= key.first && key.first <= to)
                keys.insert(key.first);
        return orv::cdb::CD_ERR_NONE;
    }
    bool exists(int kwh, int kwl) const override {
        const auto group = groups.find(kwh);
        return group != groups.end() && group->second.count(kwl) != 0;
    }
    orv::cdb::cd_error_t lock(int kwh, int kwl) override {
        log.push_back("lock " + text(kwh, kwl));
        return refusedLocks.count({kwh, kwl}) != 0 ? orv::cdb::CD_ERR_FAILED : orv::cdb::CD_ERR_NONE;
    }
    orv::cdb::cd_error_t unlock(int kwh, int kwl) override {
        log.push_back("unlock " + text(kwh, kwl));
        return refusedLocks.count({kwh, kwl}) != 0 ? orv::cdb::CD_ERR_FAILED : orv::cdb::CD_ERR_NONE;
    }
    orv::cdb::cd_error_t read(int kwh, int kwl, void* data, std::size_t& len,
                              orv::cdb::CdbReadWriteMode mode) const override {
        log.push_back("read " + text(kwh, kwl) + text(mode));
        if (!exists(kwh, kwl))
            return orv::cdb::CD_ERR_NOTFOUND;
        step(mode);
        const auto& sequence = groups.at(kwh).at(kwl);
        const auto record = sequence.find(position);
        if (record == sequence.end())
            return orv::cdb::CD_ERR_NOTFOUND;
        return orv::cdb::detail::deliverRecord(record->second.data(), record->second.size(), data, len);
    }
    orv::cdb::cd_error_t write(int kwh, int kwl, const void* data, std::size_t len,
                               orv::cdb::CdbReadWriteMode mode) override {
        log.push_back("write " + text(kwh, kwl) + text(mode));
        if (refuseWrites)
            return orv::cdb::CD_ERR_FAILED;
        step(mode);
        if (mode == orv::cdb::kFirstRecord)
            groups[kwh].erase(kwl);
        const auto* bytes = static_cast<const unsigned char*>(data);
        groups[kwh][kwl][position] = Record(bytes, bytes + len);
        ++m_updates[{kwh, kwl}];
        return orv::cdb::CD_ERR_NONE;
    }
    orv::cdb::cd_error_t del(int kwh, int kwl) override {
        log.push_back("del " + text(kwh, kwl));
        if (kwl < 0)
            return groups.erase(kwh) != 0 ? orv::cdb::CD_ERR_NONE : orv::cdb::CD_ERR_NOTFOUND;
        return groups[kwh].erase(kwl) != 0 ? orv::cdb::CD_ERR_NONE : orv::cdb::CD_ERR_NOTFOUND;
    }
    int getUpdateNo(int kwh, int kwl) const override {
        const auto found = m_updates.find({kwh, kwl});
        return counting && found != m_updates.end() ? found->second : -1;
    }
    int getUpdateNo() const override { return -1; }

    // The calls of one kind, in order.
    std::vector<std::string> calls(const std::string& kind) const {
        std::vector<std::string> found;
        for (const std::string& call : log)
            if (call.compare(0, kind.size() + 1, kind + " ") == 0)
                found.push_back(call);
        return found;
    }

private:
    void step(orv::cdb::CdbReadWriteMode mode) const {
        if (mode == orv::cdb::kFirstRecord)
            position = 0;
        else if (mode == orv::cdb::kNextRecord)
            ++position;
    }

    std::map<Key, int> m_updates;
};

} // namespace testing_support
