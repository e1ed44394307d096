#include "cli/arx/commands.h"
#include "cli/arx/elements.h"
#include "cli/arx/elements_summary.h"
#include "cli/common/handles.h"
#include "cli/common/output.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

class ElementsShow : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("elements"), "show", "Shows everything of one element",
            "Beside what 'list' tells: space, layer, extents, numbered properties, named values, the log of\n"
            "messages, what its front end tells about it, and each plugin with the size of its data, its "
            "ids,\n"
            "properties and values; of a plugin whose module is not loaded what the drawing keeps.\n"
            "\n"
            "Example: taldork elements show hall.dwg 2A");
        addDrawing(*command, m_file);
        addHandle(*command, m_handle);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        visitElement(drawing, findObject(drawing, m_handle), [&](const FoundElement& found) {
            const Json element = describeWholeElement(drawing, found);
            m_json ? printJson(element) : printText(elementText(element));
        });
    }

private:
    std::string m_file, m_handle;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeElementsShow() { return std::make_unique<ElementsShow>(); }

} // namespace taldork::cli
