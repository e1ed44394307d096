#include "cli/arx/commands.h"
#include "cli/arx/store.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"
#include "cli/common/record_key.h"
#include "cli/common/terminal.h"

namespace taldork::cli {

using namespace orv::cdb;

namespace {

std::string checkRecordBytes(const std::string& text) {
    const auto bytes = parseHex(text);
    return bytes && bytes->empty() ? "a record holds at least one byte" : checkHex(text);
}

class RecordsPut : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        m_command = addSubcommand(
            program.get_subcommand("records"), "put", "Writes the records of a key",
            "Each --file and each --hex is one record, in the order in which they are given. What the key\n"
            "held before goes, unless --append puts the new records behind it. Then the drawing is saved.\n"
            "\n"
            "Examples: taldork records put hall.dwg 30/1 --file header.bin --hex \"00 ff 1c\"\n"
            "          taldork records put hall.dwg 30/1 --hex 07 --append");
        addDrawing(*m_command, m_file);
        m_command->add_option("KWH/KWL", m_key, "the key, as in 10/0")
            ->required()
            ->option_text(noRemark)
            ->check(CLI::Validator(checkKey, ""));
        m_fileOption =
            m_command->add_option("--file", m_inputs, "A record with the bytes of this file; may be repeated")
                ->allow_extra_args(false)
                ->option_text("IN ...");
        m_hexOption =
            m_command->add_option("--hex", m_hex, "A record with these bytes, as in 00ff1c; may be repeated")
                ->allow_extra_args(false)
                ->option_text("BYTES ...")
                ->check(CLI::Validator(checkRecordBytes, ""));
        m_command->add_flag("--append", m_append, "Put the records behind those that the key has");
        addStore(*m_command, m_store);
        m_command->callback([this] {
            if (m_inputs.empty() && m_hex.empty())
                throw CLI::RequiredError("--file or --hex");
        });
        return m_command;
    }

    void run() override {
        const std::vector<Bytes> records = gatherRecords();
        Drawing drawing = Drawing::open(m_file);
        Store store(drawing, m_store);
        const RecordKey key = *parseRecordKey(m_key);
        writeSequence(store.cdb(), key, records);
        drawing.save();
        printText(key.text() + ": " + counted(records.size(), "record") +
                  (m_append ? " appended\n" : " written\n"));
    }

private:
    /// The records in the order of the command line, over both options.
    std::vector<Bytes> gatherRecords() const {
        std::vector<Bytes> records;
        auto input = m_inputs.begin();
        auto hex = m_hex.begin();
        for (const CLI::Option* option : m_command->parse_order()) {
            if (option == m_fileOption) {
                records.push_back(readFile(*input));
                if (records.back().empty())
                    throw Failure(*input, "is empty; a record holds at least one byte");
                ++input;
            } else if (option == m_hexOption) {
                records.push_back(*parseHex(*hex++));
            }
        }
        return records;
    }

    void writeSequence(ICdb& cdb, const RecordKey& key, const std::vector<Bytes>& records) const {
        CdbReadWriteMode mode = kFirstRecord;
        if (m_append && cdb.exists(key.kwh, *key.kwl)) {
            // The walk ends with the position behind the last record, which is where the first new one goes.
            recordSizes(cdb, key.kwh, *key.kwl);
            mode = kSameRecord;
        }
        Progress progress("writing records", records.size());
        for (const Bytes& bytes : records) {
            const cd_error_t status = cdb.write(key.kwh, *key.kwl, bytes.data(), bytes.size(), mode);
            if (status != CD_ERR_NONE)
                throw Failure(m_file,
                              "the record cannot be written under " + key.text() + ": " + statusText(status));
            mode = kNextRecord;
            progress.step();
        }
    }

    std::string m_file, m_key, m_store;
    std::vector<std::string> m_inputs, m_hex;
    bool m_append = false;
    CLI::App* m_command = nullptr;
    CLI::Option* m_fileOption = nullptr;
    CLI::Option* m_hexOption = nullptr;
};

} // namespace

std::unique_ptr<Command> makeRecordsPut() { return std::make_unique<RecordsPut>(); }

} // namespace taldork::cli
