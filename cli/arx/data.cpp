// General data of a store: the named values beside its records.

#include "cli/arx/commands.h"
#include "cli/common/drawing.h"
#include "cli/common/failure.h"
#include "cli/common/hex.h"
#include "cli/common/output.h"

#include "arx/dictionary_utils.h"
#include "dbdict.h"
#include "dbx/cdb/cdbrec_old.h"
#include "dbx/dictionary.h"
#include "dbx/nod.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace taldork::cli {

namespace {

void addNames(CLI::App& command, std::string& file, std::string& store, std::string& name) {
    addDrawing(command, file);
    command.add_option("STORE", store, "the store, as in ASDWG")->required()->option_text(noRemark);
    command.add_option("NAME", name, "the value's name")->required()->option_text(noRemark);
}

void checkNames(const std::string& store, const std::string& name) {
    if (store.empty() || name.empty())
        throw CLI::ValidationError("STORE, NAME", "must not be empty");
}

/// The whole of a raw value, however long; nothing when there is none. The read function of the module wants
/// to be told the length, so the record is asked for it first.
std::optional<Bytes> readRaw(AcDbDatabase& database, const std::string& store, const std::string& name) {
    AcDbObjectId id = orv::dictionary::getKelmoran(&database);
    for (const std::wstring& level : {platform::fromUtf8(store), std::wstring(L"GENERAL")}) {
        if (id.isNull())
            return std::nullopt;
        id = orv::acad::get_subDict_id(id, level.c_str(), false, &database);
    }
    AcDbDictionary* general = nullptr;
    if (id.isNull() || acdbOpenObject(general, id, AcDb::kForRead) != Acad::eOk)
        return std::nullopt;
    ORV_CObjCdbRecord* record = nullptr;
    const Acad::ErrorStatus found = general->getAt(platform::fromUtf8(name).c_str(), record, AcDb::kForRead);
    general->close();
    if (found != Acad::eOk)
        return std::nullopt;
    Bytes bytes(static_cast<std::size_t>(record->getLen()));
    record->close();
    if (!orv::acad::nod_readGeneralData(platform::fromUtf8(store), platform::fromUtf8(name), bytes.data(),
                                        bytes.size()))
        return std::nullopt;
    return bytes;
}

class DataGet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(program.get_subcommand("data"), "get", "Prints a value",
                                          "A value is a text unless --flag or --raw is given.\n"
                                          "\n"
                                          "Example: taldork data get hall.dwg ASDWG title");
        addNames(*command, m_file, m_store, m_name);
        CLI::Option* text = command->add_flag("--text", "The value is a text (the default)");
        CLI::Option* flag = command->add_flag("--flag", m_flag, "The value is a flag: prints true or false");
        CLI::Option* raw =
            command->add_flag("--raw", m_raw, "The value is a row of bytes: prints it in hexadecimal");
        flag->excludes(text);
        raw->excludes(text)->excludes(flag);
        addJson(*command, m_json);
        command->callback([this] { checkNames(m_store, m_name); });
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        const nlohmann::ordered_json value = m_flag ? flagValue() : m_raw ? rawValue(drawing) : textValue();
        if (value.is_null())
            throw Failure(m_file, "the store '" + m_store + "' has no " + kind() + " '" + m_name + "'");
        if (m_json)
            printJson({{"store", m_store}, {"name", m_name}, {"kind", kind()}, {"value", value}});
        else
            printText((value.is_string() ? value.get<std::string>() : value.dump()) + "\n");
    }

private:
    const char* kind() const { return m_flag ? "flag" : m_raw ? "raw" : "text"; }

    nlohmann::ordered_json flagValue() const {
        bool flag = false;
        if (!orv::acad::nod_readGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name), flag))
            return {};
        return flag;
    }

    nlohmann::ordered_json rawValue(const Drawing& drawing) const {
        const auto bytes = readRaw(drawing.database(), m_store, m_name);
        return bytes ? nlohmann::ordered_json(hexDigits(*bytes)) : nlohmann::ordered_json();
    }

    nlohmann::ordered_json textValue() const {
        std::wstring text;
        if (!orv::acad::nod_readGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name), text))
            return {};
        return platform::toUtf8(text);
    }

    std::string m_file, m_store, m_name;
    bool m_flag = false, m_raw = false, m_json = false;
};

class DataSet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("data"), "set", "Writes a value and saves the drawing",
                          "The store's dictionary is made when the drawing has none of that name.\n"
                          "\n"
                          "Examples: taldork data set hall.dwg ASDWG title --text \"Hall 3\"\n"
                          "          taldork data set hall.dwg ASDWG checked --flag true");
        addNames(*command, m_file, m_store, m_name);
        m_textOption = command->add_option("--text", m_text, "A text")->option_text("TEXT");
        m_flagOption = command->add_option("--flag", m_flag, "A flag")->option_text("true|false");
        m_rawOption = command->add_option("--raw", m_raw, "A row of bytes, as in 00ff1c")
                          ->option_text("BYTES")
                          ->check(CLI::Validator(checkHex, ""));
        command->callback([this] {
            checkNames(m_store, m_name);
            if (m_textOption->count() + m_flagOption->count() + m_rawOption->count() != 1)
                throw CLI::ValidationError("data set", "one of --text, --flag and --raw is needed");
        });
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        const bool written = m_textOption->count() != 0   ? writeText()
                             : m_flagOption->count() != 0 ? writeFlag()
                                                          : writeRaw(drawing);
        if (!written)
            throw Failure(m_file,
                          "the value '" + m_name + "' cannot be written into the store '" + m_store + "'");
        drawing.save();
        printText(m_store + " " + m_name + ": written\n");
    }

private:
    // The text form answers true whatever became of its parts, so each form is read back before the drawing
    // is saved.
    bool writeText() const {
        const std::wstring text = platform::fromUtf8(m_text);
        std::wstring back;
        return orv::acad::nod_writeGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name),
                                               text) &&
               orv::acad::nod_readGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name),
                                              back) &&
               back == text;
    }

    bool writeFlag() const {
        bool back = !m_flag;
        return orv::acad::nod_writeGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name),
                                               m_flag) &&
               orv::acad::nod_readGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name),
                                              back) &&
               back == m_flag;
    }

    bool writeRaw(const Drawing& drawing) const {
        const Bytes bytes = *parseHex(m_raw);
        return orv::acad::nod_writeGeneralData(platform::fromUtf8(m_store), platform::fromUtf8(m_name),
                                               bytes.data(), bytes.size()) &&
               readRaw(drawing.database(), m_store, m_name) == bytes;
    }

    std::string m_file, m_store, m_name, m_text, m_raw;
    bool m_flag = false;
    CLI::Option* m_textOption = nullptr;
    CLI::Option* m_flagOption = nullptr;
    CLI::Option* m_rawOption = nullptr;
};

} // namespace

std::unique_ptr<Command> makeDataGet() { return std::make_unique<DataGet>(); }
std::unique_ptr<Command> makeDataSet() { return std::make_unique<DataSet>(); }

} // namespace taldork::cli
