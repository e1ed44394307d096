#include "cli/arx/transfer.h"

#include "cli/arx/commands.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <filesystem>

namespace taldork::cli {

namespace {

bool sameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(std::filesystem::u8path(a), std::filesystem::u8path(b), error);
}

/// A message of the module as the end of one line.
std::string oneLine(std::string text) {
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

} // namespace

void Transfer::describe(CLI::App& command, const std::string& keyName, const std::string& keyMeaning,
                        std::string (*check)(const std::string&)) {
    addDrawing(command, m_source, "SRC", "the drawing that is read");
    addDrawing(command, m_target, "DST", "the drawing that is changed");
    command.add_option(keyName, m_keyText, keyMeaning)
        ->required()
        ->option_text(noRemark)
        ->check(CLI::Validator(check, ""));
    command.add_flag("--header", m_header, "Only the header record of each key, the one at position 0");
    command.add_option("--range", m_rangeText, "Only the keys of the group from A to B, both included")
        ->option_text("A:B")
        ->check(CLI::Validator(checkRange, ""));
    addStore(command, m_sourceStore);
    command.add_option("--to-store", m_targetStore, "Name of the store in DST")
        ->option_text("NAME [as --store]");
    addJson(command, m_json);
    command.callback([this] { checkUsage(); });
}

void Transfer::checkUsage() {
    m_key = *parseRecordKey(m_keyText);
    if (!m_rangeText.empty())
        m_range = parseKeyRange(m_rangeText);
    if (m_range && !m_key.isGroup())
        throw CLI::ValidationError("--range", "goes with a group (KWH), not with one key");
    if (m_targetStore.empty())
        m_targetStore = m_sourceStore;
}

void Transfer::run(const std::function<void(Store&, orv::cdb::ICdb&)>& move) {
    const bool oneDrawing = sameFile(m_source, m_target);
    if (oneDrawing && m_sourceStore == m_targetStore)
        throw Failure(m_target, "is source and target at once; name another store with --to-store");

    // The target is opened last: it is the one that is worked in.
    std::optional<Drawing> other;
    if (!oneDrawing)
        other = Drawing::open(m_source);
    Drawing target = Drawing::open(m_target);
    Store sourceStore(other ? *other : target, m_sourceStore);
    Store targetStore(target, m_targetStore);

    RecordingStore recording(targetStore.cdb());
    try {
        move(sourceStore, recording);
    } catch (const Failure&) {
        throw;
    } catch (const std::exception& failure) {
        throw Failure(m_target, oneLine(failure.what()));
    }
    if (!recording.written().empty() || !recording.deleted().empty())
        target.save();
    m_json ? printAsJson(recording, m_targetStore) : print(recording, m_targetStore);
}

void Transfer::print(const RecordingStore& done, const std::string& store) const {
    std::string text;
    for (const int kwl : done.deleted())
        text += "deleted " + RecordKey{m_key.kwh, kwl}.text() + "\n";
    for (const auto& [kwl, key] : done.written())
        text += "copied  " + padRight(RecordKey{m_key.kwh, kwl}.text(), 12) + counted(key.records, "record") +
                ", " + counted(key.bytes, "byte") + "\n";
    text += "store " + store + ": " + counted(done.written().size(), "key") + " copied, " +
            counted(done.deleted().size(), "key") + " deleted" +
            (done.groupDeleted() ? " with the whole group " + std::to_string(m_key.kwh) : "") + "\n";
    printText(text);
}

void Transfer::printAsJson(const RecordingStore& done, const std::string& store) const {
    auto copied = nlohmann::ordered_json::array();
    for (const auto& [kwl, key] : done.written())
        copied.push_back({{"kwh", m_key.kwh}, {"kwl", kwl}, {"records", key.records}, {"bytes", key.bytes}});
    auto deleted = nlohmann::ordered_json::array();
    for (const int kwl : done.deleted())
        deleted.push_back({{"kwh", m_key.kwh}, {"kwl", kwl}});
    printJson({{"store", store},
               {"copied", std::move(copied)},
               {"deleted", std::move(deleted)},
               {"groupDeleted", done.groupDeleted()}});
}

} // namespace taldork::cli
