#include "cli/common/drawing.h"
#include "cli/common/output.h"
#include "cli/program/commands.h"

namespace taldork::cli {

namespace {

class Save : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            &program, "save", "Opens a drawing and saves it under another name",
            "Objects that nobody changed keep their bytes. OUT is replaced in one step: there is always one\n"
            "whole file.\n"
            "\n"
            "Example: taldork save hall.dwg copy.dwg");
        command->add_option("FILE", m_file, "the drawing")->required()->option_text(noRemark);
        command->add_option("OUT", m_out, "the file to write; one that is there is replaced in one step")
            ->required()
            ->option_text(noRemark);
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        drawing.saveAs(m_out);
        printText("saved " + m_file + " as " + m_out + "\n");
    }

private:
    std::string m_file, m_out;
};

} // namespace

std::unique_ptr<Command> makeSave() { return std::make_unique<Save>(); }

} // namespace taldork::cli
