#pragma once

#include "cli/arx/recording_store.h"
#include "cli/arx/store.h"
#include "cli/common/record_key.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>

namespace taldork::cli {

/// What `records copy` and `records sync` have in common: two drawings, a store in each, the choice of keys,
/// and the account of what was done.
class Transfer {
public:
    /// Adds the arguments and options. `keyName` and `checkName` tell what may stand in the key's place.
    void describe(CLI::App& command, const std::string& keyName, const std::string& keyMeaning,
                  std::string (*check)(const std::string&));

    const RecordKey& key() const { return m_key; }
    bool headersOnly() const { return m_header; }
    const std::optional<KeyRange>& range() const { return m_range; }
    const std::string& source() const { return m_source; }

    /// Opens both drawings and their stores, lets `move` move the records, prints what it did, and saves the
    /// target if it has been changed. When `move` throws, the target's file stays as it was.
    void run(const std::function<void(Store& source, orv::cdb::ICdb& target)>& move);

private:
    void checkUsage();
    void print(const RecordingStore& done, const std::string& store) const;
    void printAsJson(const RecordingStore& done, const std::string& store) const;

    std::string m_source, m_target, m_keyText, m_rangeText, m_sourceStore, m_targetStore;
    RecordKey m_key;
    std::optional<KeyRange> m_range;
    bool m_header = false;
    bool m_json = false;
};

} // namespace taldork::cli
