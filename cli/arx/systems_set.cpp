#include "cli/arx/commands.h"
#include "cli/arx/report_scope.h"
#include "cli/arx/store.h"
#include "cli/arx/system_changes.h"
#include "cli/arx/systems.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"

#include "base/exceptions.h"

#include <set>

namespace taldork::cli {

namespace {

using Part = SystemChange::Part;

class SystemsSet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("systems"), "set", "Changes a structural system and saves the drawing",
            "Keys:\n"
            "  box=X,Y,Z,X,Y,Z   extents in the drawing, the lower corner first\n"
            "  nodes=N           number of nodes\n"
            "  max-node=N        highest node number\n"
            "  point-size=D      size of points\n"
            "  size.N=D          graphic settings by their numbers, from 0 to 299:\n"
            "  switch.N=on|off   sizes, switches,\n"
            "  colour.N=#RRGGBB  and colours, with two more digits for the opacity\n"
            "All keys are checked before anything is changed, and each may be given once.\n"
            "\n"
            "Example: taldork systems set hall.dwg ASDWG nodes=120 size.2=0.3 colour.51=#ff8000");
        addDrawing(*command, m_file);
        addSystem(*command, m_name);
        command->add_option("KEY=VALUE", m_texts, "what to change")
            ->required()
            ->option_text("...")
            ->check(CLI::Validator(checkSystemChange, ""));
        command->callback([this] { gather(); });
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        const auto system = findSystem(drawing, m_name);
        Store store(drawing, m_name);
        if (touches(Part::kSettings))
            refuseUnreadSettings(store.cdb());
        // What could not be read at the opening may have kept these from being read.
        if (touches(Part::kPointSize))
            system->updateSettingsFrom(store.cdb());
        std::string keys;
        for (const SystemChange& change : m_changes) {
            change.apply(*system, m_file);
            keys += (keys.empty() ? "" : ", ") + change.key;
        }
        writeBack(*system, store.cdb());
        drawing.save();
        printText("set " + keys + " of the system '" + m_name + "'\n");
    }

private:
    void gather() {
        std::set<std::string> keys;
        for (const std::string& text : m_texts) {
            m_changes.push_back(parseSystemChange(text));
            if (!keys.insert(m_changes.back().key).second)
                throw CLI::ValidationError("KEY=VALUE", "'" + m_changes.back().key + "' is given twice");
        }
    }

    bool touches(Part part) const {
        for (const SystemChange& change : m_changes)
            if (change.part == part)
                return true;
        return false;
    }

    /// Settings of a newer release, or damaged ones, are not in the system; writing it back would be their
    /// end.
    void refuseUnreadSettings(orv::cdb::ICdb& cdb) const {
        bool whole = true;
        orv::System probe;
        try {
            const ReportScope quiet([&](const ReportScope::Report&) { whole = false; });
            probe.updateVisFrom(cdb);
        } catch (const orv::Exception&) {
            whole = false;
        }
        if (!whole)
            throw Failure(m_file, "the graphic settings of '" + m_name +
                                      "' (10/100) cannot be read whole, so they are not written over; "
                                      "'taldork systems check' tells more");
    }

    /// Records that nothing was changed in stay as they came.
    void writeBack(orv::System& system, orv::cdb::ICdb& cdb) const {
        const bool done = (!touches(Part::kSystem) || system.updateTo(cdb)) &&
                          (!touches(Part::kSettings) || system.updateVisTo(cdb)) &&
                          (!touches(Part::kPointSize) || system.updateSettingsTo(cdb));
        if (!done)
            throw Failure(m_file, "the records of '" + m_name + "' cannot be written");
    }

    std::string m_file, m_name;
    std::vector<std::string> m_texts;
    std::vector<SystemChange> m_changes;
};

} // namespace

std::unique_ptr<Command> makeSystemsSet() { return std::make_unique<SystemsSet>(); }

} // namespace taldork::cli
