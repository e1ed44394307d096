#include "cli/common/drawing.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"
#include "cli/program/commands.h"
#include "cli/program/modules.h"

#include <filesystem>

namespace taldork::cli {

namespace {

class New : public Command {
public:
    explicit New(CommandModule* module) : m_module(module) {}

    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(&program, "new", "Makes a new drawing",
                                          "The drawing is of version 2000. A file that is there already is "
                                          "left alone, and the call fails.\n"
                                          "\n"
                                          "Example: taldork new hall.dwg --store ASDWG");
        command->add_option("FILE", m_file, "the new drawing")->required()->option_text(noRemark);
        command
            ->add_option("--store", m_stores,
                         "Make an empty record store of this name in it; may be repeated")
            ->allow_extra_args(false)
            ->option_text("NAME ...");
        return command;
    }

    void run() override {
        std::error_code error;
        if (std::filesystem::exists(std::filesystem::u8path(m_file), error))
            throw Failure(m_file, "is there already");
        if (!m_stores.empty() && m_module == nullptr)
            throw Failure("--store", moduleAwayText());
        Drawing drawing = Drawing::create(m_file);
        for (const std::string& store : m_stores)
            m_module->createStore(drawing.database(), store);
        drawing.save();
        printText("made " + m_file + "\n");
    }

private:
    CommandModule* m_module;
    std::string m_file;
    std::vector<std::string> m_stores;
};

} // namespace

std::unique_ptr<Command> makeNew(CommandModule* module) { return std::make_unique<New>(module); }

} // namespace taldork::cli
