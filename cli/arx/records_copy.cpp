#include "cli/arx/commands.h"
#include "cli/arx/transfer.h"
#include "cli/common/failure.h"

namespace taldork::cli {

using namespace orv::cdb;

namespace {

class RecordsCopy : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("records"), "copy", "Copies a key or a group into another drawing",
            "A key that is copied replaces the one in DST; what else DST holds stays. Prints what was "
            "copied\n"
            "and saves DST.\n"
            "\n"
            "Examples: taldork records copy a.dwg b.dwg 30/1\n"
            "          taldork records copy a.dwg b.dwg 10 --header --range 0:99");
        m_transfer.describe(*command, "KWH[/KWL]", "the key, as in 10/0, or the group, as in 10",
                            checkKeyOrGroup);
        return command;
    }

    void run() override {
        m_transfer.run([this](Store& source, ICdb& target) {
            requireSource(source);
            m_transfer.headersOnly() ? copyHeaders(source, target) : copyWhole(source, target);
        });
    }

private:
    /// A copy of what is not there changes nothing, which would look like success.
    void requireSource(Store& source) const {
        const RecordKey& key = m_transfer.key();
        if (!key.isGroup() && !source.cdb().exists(key.kwh, *key.kwl))
            throw Failure(m_transfer.source(), "there is no key " + key.text());
        if (key.isGroup() && source.groups().count(key.kwh) == 0)
            throw Failure(m_transfer.source(), "there is no group " + key.text());
    }

    void copyWhole(Store& source, ICdb& target) const {
        const RecordKey& key = m_transfer.key();
        if (!key.isGroup())
            copy(source.cdb(), target, key.kwh, *key.kwl);
        else if (const auto& range = m_transfer.range())
            copyRange(source.cdb(), target, key.kwh, range->from, range->to);
        else
            copy(source.cdb(), target, key.kwh);
    }

    void copyHeaders(Store& source, ICdb& target) const {
        const RecordKey& key = m_transfer.key();
        std::set<int> keys;
        if (!key.isGroup())
            keys.insert(*key.kwl);
        else if (const auto& range = m_transfer.range())
            source.cdb().getKeysForKwhAndRange(key.kwh, keys, range->from, range->to);
        else
            source.cdb().getKeysForKwh(key.kwh, keys);
        for (const int kwl : keys)
            copyHeader(source.cdb(), target, key.kwh, kwl);
    }

    Transfer m_transfer;
};

} // namespace

std::unique_ptr<Command> makeRecordsCopy() { return std::make_unique<RecordsCopy>(); }

} // namespace taldork::cli
