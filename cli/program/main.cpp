// taldork: a headless console on drawings. It links the host alone; the subcommands that need the module come
// from the command module, when that is there.

#include "cli/common/failure.h"
#include "cli/program/commands.h"
#include "cli/program/modules.h"

#include "embedded/applications.h"
#include "embedded/console.h"
#include "embedded/host_start.h"
#include "embedded/session.h"
#include "platform/text.h"

#include <cstdio>
#include <exception>
#include <utility>

namespace taldork::cli {

namespace {

enum ExitCode { exitDone = 0, exitFailed = 1, exitUsage = 2 };

void printError(const std::string& text) { std::fprintf(stderr, "taldork: %s\n", text.c_str()); }

/// The program from its command line to its exit code.
class Program {
public:
    int run(int argc, char** argv);

private:
    void describe();
    void describeGroup(const CommandGroup& group, bool isLoaded);
    void addCommands(CommandSet* module);
    std::string awayText(const CommandGroup& group) const;
    int parse(int argc, char** argv);
    int execute();
    void takeReport(const std::string& line);
    void printReportCount() const;

    CLI::App m_app{
        "Reads, changes and writes drawings (DWG version 2000), with the records that a structural model "
        "keeps in them.",
        "taldork"};
    bool m_verbose = false;
    std::size_t m_reports = 0;
    CommandModule* m_module = nullptr;
    CommandSet* m_example = nullptr;
    std::vector<std::unique_ptr<Command>> m_own;
    std::vector<std::pair<CLI::App*, Command*>> m_commands;
};

int Program::run(int argc, char** argv) {
    // What the host's console shows is no result of a call: it goes where errors go.
    embedded::setConsoleSink(
        [](const std::wstring& text) { std::fputs(platform::toUtf8(text).c_str(), stderr); });
    embedded::startHost();
    m_module = loadCommandModule();
    if (m_module != nullptr) {
        m_module->setReportSink([this](const std::string& line) { takeReport(line); });
        m_example = loadExampleCommands();
    }
    describe();
    int code = parse(argc, argv);
    if (code < 0)
        code = execute();
    if (std::fflush(stdout) != 0 && code == exitDone) {
        printError("standard output: cannot be written");
        code = exitFailed;
    }
    if (code == exitDone)
        printReportCount();
    if (m_module != nullptr)
        m_module->setReportSink({});
    embedded::endSession();
    return code;
}

void Program::describe() {
    m_app.require_subcommand(1);
    m_app.fallthrough();
    m_app.set_version_flag("--version", TALDORK_VERSION, "Print the version and exit");
    m_app.add_flag("--verbose", m_verbose, "Also print the failed expectations that the module reports");
    m_app.footer("Exit codes: 0 done, 1 the operation failed, 2 wrong usage.\n"
                 "'taldork SUBCOMMAND --help' tells more about each.");

    m_own.push_back(makeNew(m_module));
    m_own.push_back(makeSave());
    m_own.push_back(makeInfo(m_module));
    for (const auto& command : m_own)
        m_commands.emplace_back(command->describe(m_app), command.get());

    for (const CommandGroup& group : commandGroups)
        describeGroup(group, m_module != nullptr);
    describeGroup(exampleCommand, m_example != nullptr);
    addCommands(m_module);
    addCommands(m_example);
}

void Program::describeGroup(const CommandGroup& group, bool isLoaded) {
    if (group.isCommand && isLoaded)
        return; // describes itself
    CLI::App* app = m_app.add_subcommand(group.name, group.description);
    // Without the module the words behind a group are taken as they come, to be refused with the true reason.
    if (isLoaded) {
        app->require_subcommand(1);
        return;
    }
    app->fallthrough(false)->prefix_command();
    app->footer("Cannot be done now: it " + awayText(group));
}

void Program::addCommands(CommandSet* module) {
    if (module == nullptr)
        return;
    for (Command* command : module->commands())
        m_commands.emplace_back(command->describe(m_app), command);
}

/// Why the subcommands of a group cannot be used, when its module is away.
std::string Program::awayText(const CommandGroup& group) const {
    return &group != &exampleCommand || m_module == nullptr ? moduleAwayText() : exampleAwayText();
}

/// The exit code, or -1 when there is a subcommand to execute.
int Program::parse(int argc, char** argv) {
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return m_app.exit(error) == 0 ? exitDone : exitUsage;
    }
    return -1;
}

int Program::execute() {
    try {
        for (const auto& [app, command] : m_commands) {
            if (app->parsed()) {
                command->run();
                return exitDone;
            }
        }
        for (const CommandGroup& group : commandGroups)
            if (m_app.got_subcommand(group.name))
                throw Failure(group.name, awayText(group));
        if (m_app.got_subcommand(exampleCommand.name))
            throw Failure(exampleCommand.name, awayText(exampleCommand));
    } catch (const Failure& failure) {
        printError(failure.subject() + ": " + failure.what());
    } catch (const std::exception& error) {
        printError(error.what());
    }
    return exitFailed;
}

void Program::takeReport(const std::string& line) {
    m_reports += m_module->takesUpDrawing() ? 0 : 1;
    if (m_verbose)
        printError(line);
}

/// A call that failed has its one line already.
void Program::printReportCount() const {
    if (m_reports != 0 && !m_verbose)
        printError(std::to_string(m_reports) + (m_reports == 1 ? " expectation" : " expectations") +
                   " of the module did not hold; --verbose prints them");
}

} // namespace

} // namespace taldork::cli

int main(int argc, char** argv) { return taldork::cli::Program().run(argc, argv); }
