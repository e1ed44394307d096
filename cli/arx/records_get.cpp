#include "cli/arx/commands.h"
#include "cli/arx/store.h"
#include "cli/common/output.h"
#include "cli/common/record_key.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

class RecordsGet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("records"), "get", "Prints one record, or writes it into a file",
            "The bytes are printed in hexadecimal, with their offsets and printable characters. With -o the\n"
            "bytes themselves go into a file, which is there whole or not at all.\n"
            "\n"
            "Examples: taldork records get hall.dwg 30/1\n"
            "          taldork records get hall.dwg 30/1 --position 2 -o record.bin");
        addDrawing(*command, m_file);
        command->add_option("KWH/KWL", m_key, "the key, as in 10/0")
            ->required()
            ->option_text(noRemark)
            ->check(CLI::Validator(checkKey, ""));
        command
            ->add_option("--position", m_position,
                         "Position of the record under the key; 0 is the header record")
            ->check(CLI::Validator(checkPosition, ""))
            ->option_text("N [0]");
        m_outOption =
            command->add_option("-o,--out", m_out, "Write the bytes into this file; \"-\" is standard output")
                ->option_text("OUT");
        addStore(*command, m_store);
        addJson(*command, m_json);
        m_outOption->excludes("--json");
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        Store store(drawing, m_store);
        const RecordKey key = *parseRecordKey(m_key);
        const Bytes bytes = readRecord(store.cdb(), m_file, key.kwh, *key.kwl, m_position);
        if (m_outOption->count() != 0)
            writeFile(m_out, bytes);
        else if (m_json)
            printJson({{"store", store.name()},
                       {"kwh", key.kwh},
                       {"kwl", *key.kwl},
                       {"position", m_position},
                       {"size", bytes.size()},
                       {"hex", hexDigits(bytes)}});
        else
            printText(hexDump(bytes));
    }

private:
    std::string m_file, m_key, m_out, m_store;
    int m_position = 0;
    bool m_json = false;
    CLI::Option* m_outOption = nullptr;
};

} // namespace

std::unique_ptr<Command> makeRecordsGet() { return std::make_unique<RecordsGet>(); }

} // namespace taldork::cli
