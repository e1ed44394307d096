#include "cli/arx/commands.h"
#include "cli/arx/system_complaints.h"
#include "cli/common/drawing.h"
#include "cli/common/failure.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

#include <cstdio>

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

std::string lineOf(const SystemComplaint& complaint) {
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

Json jsonOf(const SystemComplaint& complaint) {
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
        const SystemComplaints complaints = readSystems(drawing.database());
        m_json ? printAsJson(complaints) : print(complaints);
        // Their count stands behind them also where both streams end in one.
        std::fflush(stdout);
        if (!complaints.list.empty())
            throw Failure(m_file, counted(complaints.list.size(), "complaint"));
    }

private:
    static void print(const SystemComplaints& complaints) {
        std::string text;
        for (const SystemComplaint& complaint : complaints.list)
            text += lineOf(complaint);
        if (complaints.list.empty())
            text = counted(complaints.stores, "store") + ", no complaints\n";
        printText(text);
    }

    void printAsJson(const SystemComplaints& complaints) const {
        Json list = Json::array();
        for (const SystemComplaint& complaint : complaints.list)
            list.push_back(jsonOf(complaint));
        printJson({{"file", m_file}, {"stores", complaints.stores}, {"complaints", std::move(list)}});
    }

    std::string m_file;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeSystemsCheck() { return std::make_unique<SystemsCheck>(); }

} // namespace taldork::cli
