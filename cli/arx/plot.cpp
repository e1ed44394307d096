#include "cli/arx/commands.h"
#include "cli/arx/elements.h"
#include "cli/arx/plot_loads.h"
#include "cli/arx/plot_view.h"
#include "cli/arx/systems.h"
#include "cli/common/failure.h"
#include "cli/common/handles.h"
#include "cli/common/messages.h"
#include "cli/common/open_object.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include "dbproxy.h"
#include "dbsymtb.h"
#include "embedded/inventory.h"
#include "embedded/plot.h"
#include "platform/text.h"
#include "rxclass.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;
using embedded::DisplayList;
using platform::fromUtf8;
using platform::toUtf8;

/// What is plotted of the drawing, without what is left out.
DisplayList drawRest(AcDbDatabase& database, const embedded::ViewParameters& view,
                     const std::set<AcDbObjectId>& leftOut) {
    DisplayList list = embedded::draw(database, view);
    auto& primitives = list.primitives;
    primitives.erase(std::remove_if(primitives.begin(), primitives.end(),
                                    [&](const embedded::Primitive& primitive) {
                                        return leftOut.count(primitive.outermost) != 0;
                                    }),
                     primitives.end());
    embedded::leaveOutNotPlotted(list);
    return list;
}

/// Arrow heads and the like are as large as the view makes them, and the view as large as what is drawn: so
/// it is drawn until the two agree, which they do at the second or third time.
DisplayList drawFitted(AcDbDatabase& database, embedded::ViewParameters& view, const embedded::PlotPage& page,
                       const std::set<AcDbObjectId>& leftOut) {
    constexpr int mostTimes = 4;
    constexpr double closeEnough = 1.0e-3;
    DisplayList list = drawRest(database, view, leftOut);
    for (int time = 1; time < mostTimes; ++time) {
        const embedded::ViewParameters fitted = embedded::fittedView(list, view, page);
        const bool agrees = std::fabs(fitted.height - view.height) <= closeEnough * view.height &&
                            fitted.target.distanceTo(view.target) <= closeEnough * view.height;
        if (agrees && fitted.pixelsHigh == view.pixelsHigh && fitted.pixelsWide == view.pixelsWide)
            break;
        view = fitted;
        list = drawRest(database, view, leftOut);
    }
    return list;
}

/// What the host keeps of model space without knowing how it looks: kinds and their numbers.
std::map<std::string, std::size_t> notShown(const Drawing& drawing) {
    std::map<std::string, std::size_t> kinds;
    const auto space = openNeeded<AcDbBlockTableRecord>(modelSpaceOf(drawing), AcDb::kForRead, drawing.path(),
                                                        "model space");
    AcDbBlockTableRecordIterator* made = nullptr;
    requireOpen(space->newIterator(made), AcDb::kForRead, drawing.path(), "model space");
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) != Acad::eOk)
            continue;
        const AcRxClass* const kind = id.objectClass();
        if (kind == nullptr || kind->isDerivedFrom(AcDbProxyEntity::desc()))
            ++kinds[toUtf8(embedded::kindOf(id))];
    }
    return kinds;
}

class Plot : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            &program, "plot", "Draws model space of a drawing as SVG, PDF or PNG",
            "The format goes by the ending of OUT. The picture shows what is on layers that are\n"
            "visible and to be plotted, as large as the page lets it. VIEW is top, bottom,\n"
            "front, back, left, right, side (right), iso (iso-sw), iso-sw, iso-se, iso-ne,\n"
            "iso-nw, or X,Y,Z, the way from the drawing to the viewer.\n"
            "\n"
            "Example: taldork plot hall.dwg -o hall.pdf --view iso --system ASDWG --case 2");
        addDrawing(*command, m_file);
        command->add_option("-o,--out", m_out, "The picture: a name that ends in .svg, .pdf or .png")
            ->required()
            ->option_text("OUT");
        command->add_option("--view", m_view, "From where it is seen")
            ->option_text("VIEW [top]")
            ->check(CLI::Validator(checkView, ""));
        command->add_option("--system", m_system, "Of the elements only those of this system")
            ->option_text("NAME");
        addLoadCase(*command, m_case);
        command->add_flag("--dark", m_style.isDark, "On a black ground");
        auto* const size = command->add_option("--size", m_size, "Size in pixels, 96 to the inch")
                               ->option_text("WIDTHxHEIGHT")
                               ->check(CLI::Validator(checkSize, ""));
        command->add_option("--width-mm", m_page.width, "Width of the page")
            ->option_text("MM [297]")
            ->excludes(size);
        command->add_option("--height-mm", m_page.height, "Height of the page")
            ->option_text("MM [210]")
            ->excludes(size);
        command->add_option("--margin-mm", m_page.margin, "What stays free on each side")
            ->option_text("MM [5]");
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        embedded::PlotFormat format = embedded::PlotFormat::kSvg;
        if (!embedded::plotFormatOf(fromUtf8(m_out), format))
            throw Failure(m_out, "the name ends in none of .svg, .pdf and .png");
        if (!m_size.empty())
            takeSize();
        const Drawing drawing = Drawing::open(m_file);
        if (!m_system.empty())
            findSystem(drawing, m_system);
        const std::set<AcDbObjectId> without = leftOut(drawing);
        embedded::ViewParameters view;
        view.direction = viewDirection(m_view);
        const DisplayList list = drawFitted(drawing.database(), view, m_page, without);
        std::vector<unsigned char> picture;
        std::string failure;
        if (!embedded::plot(list, &drawing.database(), view, m_page, m_style, format, picture, failure))
            throw Failure(m_out, failure);
        writeFile(m_out, Bytes(picture.begin(), picture.end()));
        const Json told = description(drawing, list, view, without.size());
        m_json ? printJson(told) : print(told);
    }

private:
    void takeSize() {
        const auto [wide, high] = parsedSize(m_size);
        const double margin = m_page.margin;
        m_page = embedded::PlotPage::ofPixels(wide, high);
        m_page.margin = margin;
    }

    /// Elements of other systems, and loads of other cases.
    std::set<AcDbObjectId> leftOut(const Drawing& drawing) const {
        std::set<AcDbObjectId> ids;
        if (!m_system.empty())
            forEachElement(drawing, [&](const FoundElement& found) {
                if (found.element != nullptr && toUtf8(found.element->getNodDatabaseName()) != m_system)
                    ids.insert(found.id);
            });
        if (m_case)
            ids.merge(leaveOneCase(drawing, *m_case));
        return ids;
    }

    Json description(const Drawing& drawing, const DisplayList& list, const embedded::ViewParameters& view,
                     std::size_t leftOutCount) const {
        std::set<AcDbObjectId> entities;
        for (const embedded::Primitive& primitive : list.primitives)
            entities.insert(primitive.outermost);
        Json failures = Json::array();
        for (const embedded::DrawFailure& failed : list.failures)
            failures.push_back({{"handle", handleText(failed.owner)},
                                {"kind", toUtf8(embedded::kindOf(failed.owner))},
                                {"reason", failed.reason}});
        return {{"file", drawing.path()},
                {"picture", m_out},
                {"view", m_view},
                {"widthMm", m_page.width},
                {"heightMm", m_page.height},
                {"unitsPerMm", view.height / m_page.height},
                {"entities", entities.size()},
                {"primitives", list.primitives.size()},
                {"isCut", list.isCut},
                {"leftOut", leftOutCount},
                {"notShown", notShown(drawing)},
                {"failures", std::move(failures)}};
    }

    static void print(const Json& told) {
        std::string text = told["picture"].get<std::string>() + ": " +
                           countedEntities(told["entities"].get<std::size_t>()) + ", " +
                           counted(told["primitives"].get<std::size_t>(), "primitive") + "\n";
        if (told["isCut"].get<bool>())
            text += "not all is shown: blocks hold each other too many times\n";
        if (const auto number = told["leftOut"].get<std::size_t>(); number != 0)
            text += "left out as asked: " + counted(number, "element") + "\n";
        std::string kinds;
        for (const auto& [kind, count] : told["notShown"].items())
            kinds +=
                (kinds.empty() ? "" : ", ") + std::to_string(count.get<std::size_t>()) + " " + oneLine(kind);
        if (!kinds.empty())
            text += "not shown, since the host does not know how it looks: " + kinds + "\n";
        for (const Json& failed : told["failures"])
            text += "not drawn to its end: " + failed["handle"].get<std::string>() + " (" +
                    oneLine(failed["kind"].get<std::string>()) +
                    "): " + oneLine(failed["reason"].get<std::string>()) + "\n";
        printText(text);
    }

    static std::string countedEntities(std::size_t number) {
        return std::to_string(number) + (number == 1 ? " entity" : " entities");
    }

    std::string m_file, m_out, m_system, m_size;
    std::string m_view = "top";
    std::optional<unsigned int> m_case;
    embedded::PlotPage m_page;
    embedded::PlotStyle m_style;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makePlot() { return std::make_unique<Plot>(); }

} // namespace taldork::cli
