#pragma once

// What the program and its command modules know of each other. A module puts one CommandSet into the host's
// system registry under an entry of its own; the program, which links no part of the modules, finds it there.

#include "rxobject.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace taldork::cli {

/// Where the command module puts its CommandModule.
inline constexpr const wchar_t* commandsEntry = L"TaldorkCommands";
/// Where the command module of the example front end puts its CommandSet.
inline constexpr const wchar_t* exampleCommandsEntry = L"TaldorkExampleCommands";

/// The drawing's own record store, which a call means that names none.
inline constexpr const char* defaultStore = "ASDWG";

/// One subcommand.
class Command : public AcRxObject {
public:
    /// Adds the subcommand with its options to the program's command line, and says which one it is. Options
    /// are bound to members of the command, which lives as long as the program.
    virtual CLI::App* describe(CLI::App& program) = 0;

    /// Does the work once the command line has been read. Throws Failure when it cannot be done.
    virtual void run() = 0;
};

/// The first words of the subcommands that the command module brings. The program names them in its help also
/// when the module is away.
struct CommandGroup {
    const char* name;
    const char* description;
    bool isCommand = false; ///< the word is a subcommand by itself
};
inline constexpr CommandGroup commandGroups[] = {
    {"store", "Record stores of a drawing"},
    {"records", "Records of a store: list, read, write, delete, copy, synchronise"},
    {"data", "General data of a store: named texts, flags and raw values"},
    {"systems", "Structural systems of a drawing: list, create, change, check"},
    {"convert", "Converts points between a drawing and the store of a system", true},
    {"elements", "Elements of the model in a drawing: list, show, number, copy, edit"},
    {"loads", "Loads of a drawing: list, export"},
    {"plot", "Draws model space of a drawing as SVG, PDF or PNG", true},
    {"select", "Named selections of a drawing: list, set, delete"},
    {"settings", "Saved loads in the user's settings: get, set, list, delete"},
};
/// The same for the one of the example front end.
inline constexpr CommandGroup exampleCommand = {"example",
                                                "Fills a drawing with the example's building frame", true};

/// Adds a subcommand: `summary` is its line in the list of subcommands, `details` stands below the options in
/// its own help, in lines of its own.
inline CLI::App* addSubcommand(CLI::App* parent, const std::string& name, const std::string& summary,
                               const std::string& details) {
    CLI::App* command = parent->add_subcommand(name, summary);
    command->footer(details);
    return command;
}

/// In the help an argument's name says enough; this takes the place of CLI11's remark on its type.
inline constexpr const char* noRemark = " ";

/// The numbers of one group of a store.
struct GroupSummary {
    int kwh = 0;
    std::size_t keys = 0;
    std::size_t records = 0;
};

/// A record store as it stands in a drawing.
struct StoreSummary {
    std::string name;        ///< UTF-8
    bool hasRecords = false; ///< false for one that has general data only
    std::vector<GroupSummary> groups;
};

/// What every command module offers to the program.
class CommandSet : public AcRxObject {
public:
    /// The subcommands that need the module. They belong to it and live until the process ends.
    virtual std::vector<Command*> commands() = 0;
};

/// What the program's own command module offers besides.
class CommandModule : public CommandSet {
public:
    /// The stores of a drawing, by name.
    virtual std::vector<StoreSummary> stores(AcDbDatabase& database) = 0;

    /// Makes an empty record store. False when it is there already. Throws Failure.
    virtual bool createStore(AcDbDatabase& database, const std::string& name) = 0;

    /// True while the module takes up the systems of a drawing that is just being opened: what it reports
    /// then is the matter of the systems alone, and no fault of the call that opens the drawing.
    virtual bool takesUpDrawing() const = 0;

    /// Where failed expectations go, one line each. An empty function brings the default back, standard
    /// error.
    virtual void setReportSink(std::function<void(const std::string& line)> sink) = 0;
};

} // namespace taldork::cli
