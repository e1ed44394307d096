#include "cli/arx/commands.h"
#include "cli/arx/transfer.h"

namespace taldork::cli {

using namespace orv::cdb;

namespace {

class RecordsSync : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("records"), "sync", "Makes a group of another drawing equal",
                          "Copies all keys of the group from SRC into DST, and deletes in DST what SRC "
                          "lacks; with --range\n"
                          "only inside the range. Prints what was copied and deleted and saves DST.\n"
                          "\n"
                          "Examples: taldork records sync a.dwg b.dwg 10\n"
                          "          taldork records sync a.dwg b.dwg 10 --range 0:99");
        m_transfer.describe(*command, "KWH", "the group, as in 10", checkGroup);
        return command;
    }

    void run() override {
        m_transfer.run([this](Store& source, ICdb& target) {
            const int kwh = m_transfer.key().kwh;
            const auto& range = m_transfer.range();
            if (range && m_transfer.headersOnly())
                syncHeaderRange(source.cdb(), target, kwh, range->from, range->to);
            else if (range)
                syncRange(source.cdb(), target, kwh, range->from, range->to);
            else if (m_transfer.headersOnly())
                syncHeader(source.cdb(), target, kwh);
            else
                sync(source.cdb(), target, kwh);
        });
    }

private:
    Transfer m_transfer;
};

} // namespace

std::unique_ptr<Command> makeRecordsSync() { return std::make_unique<RecordsSync>(); }

} // namespace taldork::cli
