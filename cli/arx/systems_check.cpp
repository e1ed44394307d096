#include "cli/arx/commands.h"
#include "cli/arx/report_scope.h"
#include "cli/common/drawing.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include "dbx/doc/enumerate_cdbs.h"
#include "dbx/doc/system_manager.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;
using orv::smartassert::Report;
using orv::smartassert::Severity;

const char* severityWord(Severity severity) {
    switch (severity) {
    case Severity::kWarning:
        return "warning";
    case Severity::kError:
        return "error";
    case Severity::kDebug:
        break;
    }
    return "debug";
}

/// Something that went wrong while the systems were read.
struct Complaint {
    std::optional<std::string> store; ///< none for what concerns the drawing as a whole
    std::optional<Report> report;     ///< none for an exception
    std::string exception;
};

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::string lineOf(const Complaint& complaint) {
    std::string line = complaint.store.value_or("(drawing)") + ": ";
    if (!complaint.report)
        return oneLine(line + "exception: " + complaint.exception) + "\n";
    const Report& report = *complaint.report;
    line += severityWord(report.severity) + std::string(": ");
    line += report.message.empty() ? report.condition : report.message + " (" + report.condition + ")";
    for (std::size_t i = 0; i < report.values.size(); ++i)
        line += (i == 0 ? " [" : ", ") + report.values[i].name + "=" + report.values[i].value;
    return oneLine(line + (report.values.empty() ? "" : "]")) + "\n";
}

Json jsonOf(const Complaint& complaint) {
    Json json = {{"store", complaint.store ? Json(*complaint.store) : Json()}};
    if (!complaint.report) {
        json.update({{"kind", "exception"}, {"message", complaint.exception}});
        return json;
    }
    const Report& report = *complaint.report;
    Json values = Json::array();
    for (const auto& value : report.values)
        values.push_back({{"name", value.name}, {"value", value.value}});
    json.update({{"kind", "report"},
                 {"severity", severityWord(report.severity)},
                 {"condition", report.condition},
                 {"message", report.message},
                 {"values", std::move(values)}});
    return json;
}

/// Reads every system of a drawing that nobody has looked into yet, since an object that is damaged complains
/// when it is first opened and not again.
std::vector<Complaint> readSystems(AcDbDatabase& database, std::size_t& stores) {
    std::vector<Complaint> complaints;
    std::optional<std::string> store;
    const ReportScope scope(
        [&](const Report& report) {
            complaints.push_back({store, report, ""});
        },
        ReportScope::Before::kHearsToo);
    orv::SystemManager::Names names;
    stores = orv::detail::enumerateCdbsInNod(&database, names);
    Progress progress("reading systems", names.size());
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        store = platform::toUtf8(it->first);
        try {
            orv::SystemManager::instance()._initForStore(database, it);
        } catch (const std::exception& exception) {
            complaints.push_back({store, std::nullopt, exception.what()});
        }
        progress.step();
    }
    return complaints;
}

class SystemsCheck : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(program.get_subcommand("systems"), "check",
                                          "Tells what is wrong with the systems of a drawing",
                                          "Reads every system as the module does and prints what it "
                                          "complains of, one line each: the store,\n"
                                          "how bad it is, what is wrong, the condition that did not hold, "
                                          "and the values in question. Ends\n"
                                          "with 1 if there is any complaint. The file is not changed.\n"
                                          "\n"
                                          "Example: taldork systems check hall.dwg");
        addDrawing(*command, m_file);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::read(m_file);
        std::size_t stores = 0;
        const auto complaints = readSystems(drawing.database(), stores);
        m_json ? printAsJson(complaints, stores) : print(complaints, stores);
        // Their count stands behind them also where both streams end in one.
        std::fflush(stdout);
        if (!complaints.empty())
            throw Failure(m_file, counted(complaints.size(), "complaint"));
    }

private:
    static void print(const std::vector<Complaint>& complaints, std::size_t stores) {
        std::string text;
        for (const Complaint& complaint : complaints)
            text += lineOf(complaint);
        if (complaints.empty())
            text = counted(stores, "store") + ", no complaints\n";
        printText(text);
    }

    void printAsJson(const std::vector<Complaint>& complaints, std::size_t stores) const {
        Json list = Json::array();
        for (const Complaint& complaint : complaints)
            list.push_back(jsonOf(complaint));
        printJson({{"file", m_file}, {"stores", stores}, {"complaints", std::move(list)}});
    }

    std::string m_file;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeSystemsCheck() { return std::make_unique<SystemsCheck>(); }

} // namespace taldork::cli
