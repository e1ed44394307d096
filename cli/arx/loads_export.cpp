#include "cli/arx/commands.h"
#include "cli/arx/loads.h"
#include "cli/common/handles.h"
#include "cli/common/messages.h"
#include "cli/common/numbers.h"
#include "cli/common/output.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;
using orv::elem::LoadVertex;

constexpr const char* csvHead = "handle,name,cases,type,distribution,point,x,y,z,value\r\n";

/// A cell of comma-separated values: in quotes if it has what would end it.
std::string cell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string textOf(const Json& value) { return value.is_string() ? value.get<std::string>() : ""; }

class LoadsExport : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("loads"), "export", "Writes loads as points with values",
            "Line and area loads are sampled along their curve or outline, with at most 63 points each; a\n"
            "projected load of an element along the loaded part of that element. Point loads have their "
            "one\n"
            "point, and so have old load entities all of theirs. Coordinates are the drawing's. The rows "
            "are\n"
            "comma-separated values, one for each point, or JSON with the points below each load. A line on\n"
            "standard error tells of each line or area load without a point, and of elements that may be\n"
            "loads.\n"
            "\n"
            "Example: taldork loads export hall.dwg --case 2 -o imposed.csv");
        addDrawing(*command, m_file);
        addLoadCase(*command, m_case);
        CLI::Option* csv = command->add_flag("--csv", m_csv, "Comma-separated values; so unless told");
        addJson(*command, m_json)->excludes(csv);
        command->add_option("-o,--out", m_out, "Write to this file; '-' is standard output")
            ->option_text("OUT");
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        Json loads = Json::array();
        std::string csv = csvHead;
        const std::size_t unknown = forEachLoad(drawing, m_case, [&](const FoundLoad& load) {
            Json row = describeLoad(load);
            const auto points = load.points();
            if (points.empty())
                remark(handleText(load.found.id) + " " + titleOf(load.found) + " has no points to export");
            if (m_json) {
                row["points"] = jsonOf(points);
                loads.push_back(std::move(row));
            } else {
                csv += linesOf(load, row, points);
            }
        });
        if (unknown != 0)
            remark(unknownText(unknown));
        write(m_json ? Json({{"file", m_file}, {"loads", std::move(loads)}, {"unknown", unknown}})
                               .dump(2, ' ', false, Json::error_handler_t::replace) +
                           "\n"
                     : csv);
    }

private:
    static Json jsonOf(const std::deque<LoadVertex>& points) {
        Json rows = Json::array();
        for (const LoadVertex& vertex : points)
            rows.push_back({{"x", vertex.point.x + 0.0},
                            {"y", vertex.point.y + 0.0},
                            {"z", vertex.point.z + 0.0},
                            {"value", vertex.value + 0.0}});
        return rows;
    }

    static std::string linesOf(const FoundLoad& load, const Json& row, const std::deque<LoadVertex>& points) {
        const std::string name = textOf(row["name"]).empty() ? textOf(row["label"]) : textOf(row["name"]);
        const std::string begin = textOf(row["handle"]) + "," + cell(name) + "," +
                                  casesText(load.cases(), " ") + "," + std::to_string(load.type()) + "," +
                                  distributionText(load.distribution()) + ",";
        std::string lines;
        for (std::size_t i = 0; i < points.size(); ++i)
            lines += begin + std::to_string(i) + "," + numberText(points[i].point.x) + "," +
                     numberText(points[i].point.y) + "," + numberText(points[i].point.z) + "," +
                     numberText(points[i].value) + "\r\n";
        return lines;
    }

    /// What the rows do not say.
    void remark(const std::string& text) const {
        std::fprintf(stderr, "taldork: %s: %s\n", oneLine(m_file).c_str(), oneLine(text).c_str());
    }

    void write(const std::string& text) const {
        if (m_out.empty())
            printText(text);
        else
            writeFile(m_out, Bytes(text.begin(), text.end()));
    }

    std::string m_file, m_out;
    std::optional<unsigned int> m_case;
    bool m_csv = false, m_json = false;
};

} // namespace

std::unique_ptr<Command> makeLoadsExport() { return std::make_unique<LoadsExport>(); }

} // namespace taldork::cli
