#include "cli/arx/commands.h"
#include "cli/arx/systems.h"
#include "cli/common/failure.h"
#include "cli/common/numbers.h"
#include "cli/common/output.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

/// What separates the numbers of a line; so what this call prints can be read by it.
constexpr const char* separators = " \t\r,";

/// A point from a line of input. Blanks may stand in the commas' place, or beside them.
std::optional<Point> pointOfLine(const std::string& line) {
    std::string joined;
    std::size_t commas = 0;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t begin = line.find_first_not_of(separators, at);
        const std::size_t end = std::min(line.find_first_of(separators, begin), line.size());
        const std::string between = line.substr(at, std::min(begin, line.size()) - at);
        commas = static_cast<std::size_t>(std::count(between.begin(), between.end(), ','));
        // One comma at most, and only between two numbers.
        if (commas > 1 || (commas == 1 && (joined.empty() || begin == std::string::npos)))
            return std::nullopt;
        if (begin == std::string::npos)
            break;
        joined += (joined.empty() ? "" : ",") + line.substr(begin, end - begin);
        at = end;
    }
    return parsePoint(joined);
}

class Convert : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            &program, "convert", "Converts points between a drawing and the store of a system",
            "Prints one line for each point, with the shortest numbers that read back as the same. Without\n"
            "points on the command line they come from standard input, one on each line, with commas or\n"
            "blanks between the numbers. A point that begins with -. goes behind --.\n"
            "\n"
            "Examples: taldork convert hall.dwg ASDWG --to-store 1.5,-2,0 -1,0,3\n"
            "          taldork convert hall.dwg ASDWG --to-drawing < points.txt");
        addDrawing(*command, m_file);
        addSystem(*command, m_name);
        command->add_option("POINT", m_texts, "the points, each X,Y,Z")
            ->option_text("...")
            ->check(CLI::Validator(checkPoint, ""));
        CLI::Option* toStore =
            command->add_flag("--to-store", m_toStore, "From the drawing's coordinates to the store's");
        CLI::Option* toDrawing =
            command->add_flag("--to-drawing", m_toDrawing, "From the store's coordinates to the drawing's");
        toStore->excludes(toDrawing);
        addJson(*command, m_json);
        command->callback([this] {
            if (!m_toStore && !m_toDrawing)
                throw CLI::RequiredError("--to-store or --to-drawing");
        });
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        const auto system = findSystem(drawing, m_name);
        const std::vector<Point> points = m_texts.empty() ? readPoints() : givenPoints();
        std::string text;
        Json list = Json::array();
        for (const Point& point : points) {
            const Point converted = convert(system->converter(), point);
            text += pointText(converted) + "\n";
            if (m_json)
                list.push_back({{"from", point}, {"to", converted}});
        }
        if (m_json)
            printJson({{"store", m_name},
                       {"direction", m_toStore ? "to-store" : "to-drawing"},
                       {"points", std::move(list)}});
        else
            printText(text);
    }

private:
    std::vector<Point> givenPoints() const {
        std::vector<Point> points;
        for (const std::string& text : m_texts)
            points.push_back(*parsePoint(text));
        return points;
    }

    static std::vector<Point> readPoints() {
        std::vector<Point> points;
        std::string line;
        for (std::size_t number = 1; std::getline(std::cin, line); ++number) {
            if (line.find_first_not_of(" \t\r") == std::string::npos)
                continue;
            const auto point = pointOfLine(line);
            if (!point)
                throw Failure("standard input", "line " + std::to_string(number) + ": '" + line +
                                                    "' is no point: write X,Y,Z, as in 1.5,-2,0");
            points.push_back(*point);
        }
        return points;
    }

    Point convert(const orv::Converter& converter, const Point& point) const {
        const AcGePoint3d given(point[0], point[1], point[2]);
        const AcGePoint3d made = m_toStore ? converter.toCdb(given) : converter.fromCdb(given);
        for (const double value : {made.x, made.y, made.z})
            if (!std::isfinite(value))
                throw Failure(m_file, "the point " + pointText(point) + " has no finite counterpart in the " +
                                          (m_toStore ? "store" : "drawing"));
        // A turn leaves zeros with a sign, which mean nothing.
        return {made.x + 0.0, made.y + 0.0, made.z + 0.0};
    }

    std::string m_file, m_name;
    std::vector<std::string> m_texts;
    bool m_toStore = false, m_toDrawing = false, m_json = false;
};

} // namespace

std::unique_ptr<Command> makeConvert() { return std::make_unique<Convert>(); }

} // namespace taldork::cli
