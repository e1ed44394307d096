#include "cli/arx/commands.h"
#include "cli/arx/selections.h"
#include "cli/common/handles.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include "embedded/inventory.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

/// The objects of a list; one that the drawing has no more has no class.
Json objectRows(const std::set<AcDbObjectId>& ids) {
    Json rows = Json::array();
    for (const AcDbObjectId& id : ids) {
        const bool isThere = id.objectClass() != nullptr && !id.isErased();
        rows.push_back({{"handle", handleText(id)},
                        {"kind", isThere ? Json(platform::toUtf8(embedded::kindOf(id))) : Json()}});
    }
    return rows;
}

Json jsonOf(const Drawing& drawing, const std::string& name) {
    Json json = {{"name", name}};
    visitSelection(drawing, name, [&](const orv::ORV_NamedSelection& selection) {
        Json names = Json::array();
        for (const AcString& one : selection.m_names)
            names.push_back(platform::toUtf8(one.kACharPtr()));
        json.update({{"objects", objectRows(selection.m_objects)},
                     {"members", objectRows(selection.m_members)},
                     {"names", std::move(names)}});
    });
    return json;
}

std::string objectsText(const Json& rows, const char* mark) {
    std::string text;
    for (const Json& row : rows)
        text += "  " + padRight(row["handle"].get<std::string>(), 8) +
                oneLine(row["kind"].is_null() ? "(gone)" : row["kind"].get<std::string>()) + mark + "\n";
    return text;
}

std::string textOf(const Json& selection) {
    std::string text = oneLine(selection["name"].get<std::string>()) + ": " +
                       counted(selection["objects"].size(), "object") + "\n" +
                       objectsText(selection["objects"], "") + objectsText(selection["members"], ", member");
    for (const Json& name : selection["names"])
        text += "  name    " + oneLine(name.get<std::string>()) + "\n";
    return text;
}

class SelectList : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("select"), "list", "Lists the named selections of a drawing",
                          "Each selection with its objects: handle and kind. With a name only that one.\n"
                          "\n"
                          "Example: taldork select list hall.dwg");
        addDrawing(*command, m_file);
        command->add_option("NAME", m_name, "the selection")->option_text(noRemark);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        std::vector<std::string> names = {m_name};
        if (m_name.empty())
            names = selectionNames(drawing);
        Json selections = Json::array();
        for (const std::string& name : names)
            selections.push_back(jsonOf(drawing, name));
        m_json ? printJson({{"file", m_file}, {"selections", std::move(selections)}}) : print(selections);
    }

private:
    static void print(const Json& selections) {
        std::string text;
        for (const Json& selection : selections)
            text += textOf(selection);
        printText(text + counted(selections.size(), "selection") + "\n");
    }

    std::string m_file, m_name;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeSelectList() { return std::make_unique<SelectList>(); }

} // namespace taldork::cli
