#include "cli/arx/commands.h"
#include "cli/arx/store.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"
#include "cli/common/record_key.h"
#include "cli/common/terminal.h"

namespace taldork::cli {

using namespace orv::cdb;

namespace {

class RecordsDel : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("records"), "del", "Deletes a key or a group",
            "A key goes with all its records, a group with all its keys. Then the drawing is saved. When\n"
            "there is no such key or group, the call fails and the file stays as it was.\n"
            "\n"
            "Examples: taldork records del hall.dwg 10/7\n"
            "          taldork records del hall.dwg 10");
        addDrawing(*command, m_file);
        command->add_option("KWH[/KWL]", m_key, "the key, as in 10/0, or the group, as in 10")
            ->required()
            ->option_text(noRemark)
            ->check(CLI::Validator(checkKeyOrGroup, ""));
        addStore(*command, m_store);
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        Store store(drawing, m_store);
        const RecordKey key = *parseRecordKey(m_key);
        const std::size_t keys = key.isGroup() ? store.keys(key.kwh).size() : 1;
        const cd_error_t status = store.cdb().del(key.kwh, key.kwl.value_or(wholeGroup));
        if (status == CD_ERR_NOTFOUND)
            throw Failure(m_file,
                          std::string("there is no ") + (key.isGroup() ? "group " : "key ") + key.text());
        if (status != CD_ERR_NONE)
            throw Failure(m_file, key.text() + " cannot be deleted: " + statusText(status));
        drawing.save();
        printText(key.text() + ": " + (key.isGroup() ? counted(keys, "key") + " deleted\n" : "deleted\n"));
    }

private:
    static constexpr int wholeGroup = -1;

    std::string m_file, m_key, m_store;
};

} // namespace

std::unique_ptr<Command> makeRecordsDel() { return std::make_unique<RecordsDel>(); }

} // namespace taldork::cli
