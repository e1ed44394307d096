#include "cli/structure/example_command.h"

#include "cli/common/drawing.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"
#include "platform/text.h"
#include "structure/edit.h"
#include "structure/frame.h"

#include "dbmain.h"
#include "dbtrans.h"

#include <exception>

namespace structure {

using taldork::cli::Drawing;
using taldork::cli::Failure;
using taldork::cli::printText;

namespace {

constexpr int kMost = 100;

std::string count(std::size_t number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

std::vector<AcDbObjectId> allOf(const Frame& frame) {
    std::vector<AcDbObjectId> all = frame.nodes;
    for (const auto* list : {&frame.columns, &frame.beams, &frame.slabs, &frame.loads})
        all.insert(all.end(), list->begin(), list->end());
    return all;
}

class ExampleCommand : public taldork::cli::Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = taldork::cli::addSubcommand(
            &program, "example", "Fills a drawing with the example's building frame",
            "Puts columns, beams, slabs, nodes and loads into model space, with names, numbers,\n"
            "connections and two named selections, and saves the drawing. They are bound to the\n"
            "drawing's first system, or to the one that --system names; where there is none it is\n"
            "made, in metres. With --edit the frame is moved by two bays to the rear, copied beside\n"
            "itself, and one of its beams is erased and brought back, before the drawing is saved.\n"
            "\n"
            "Example: taldork example hall.dwg --bays 3");
        command->add_option("FILE", m_file, "The drawing")->required()->option_text(taldork::cli::noRemark);
        command->add_option("--bays", m_options.bays, "Number of bays, 2 unless told")
            ->option_text("NUMBER")
            ->check(CLI::Range(1, kMost));
        command->add_option("--storeys", m_options.storeys, "Number of storeys, 2 unless told")
            ->option_text("NUMBER")
            ->check(CLI::Range(1, kMost));
        command->add_option("--system", m_system, "Store of the system that the elements are bound to")
            ->option_text("NAME");
        command->add_flag("--no-loads", m_isBare, "The frame without loads");
        command->add_flag("--edit", m_edit, "Also move, copy, erase and bring back");
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        m_options.system = platform::fromUtf8(m_system);
        m_options.hasLoads = !m_isBare;
        std::string told;
        try {
            const Frame frame = buildFrame(drawing.database(), m_options);
            told = describeFrame(frame);
            if (m_edit)
                told += edit(drawing.database(), frame);
        } catch (const std::exception& reason) {
            throw Failure(m_file, reason.what());
        }
        drawing.save();
        printText(told);
    }

private:
    static std::string describeFrame(const Frame& frame) {
        std::string text = "made " + count(frame.size(), "element") + " of the system '" +
                           platform::toUtf8(frame.system) + "': " + count(frame.nodes.size(), "node") + ", " +
                           count(frame.columns.size(), "column") + ", " + count(frame.beams.size(), "beam") +
                           ", " + count(frame.slabs.size(), "slab") +
                           (frame.loads.empty() ? "" : ", " + count(frame.loads.size(), "load")) + "\n";
        for (const std::wstring& name : frame.selections)
            text += "made the selection '" + platform::toUtf8(name) + "'\n";
        return text;
    }

    void demand(Acad::ErrorStatus es, const char* what) const {
        if (es != Acad::eOk)
            throw Failure(m_file, what);
    }

    std::string edit(AcDbDatabase& database, const Frame& frame) const {
        const std::vector<AcDbObjectId> all = allOf(frame);
        // In drawing units: the distance of the first two nodes is a bay.
        const AcGeVector3d bay = firstBay(frame);
        demand(moveElements(database, all, bay.length() * 2.0 * AcGeVector3d::kYAxis),
               "the frame cannot be moved");
        std::vector<AcDbObjectId> copies;
        demand(copyElements(database, all, bay * (m_options.bays + 1.0), copies),
               "the frame cannot be copied");
        const AcDbObjectId beam = frame.beams.front();
        AcDbTransactionManager& transactions = *database.transactionManager();
        transactions.startTransaction();
        const Acad::ErrorStatus es = eraseElements({beam});
        const bool wasErased = beam.isErased();
        demand(transactions.abortTransaction(), "a beam cannot be brought back");
        demand(es, "a beam cannot be erased");
        if (!wasErased || beam.isErased())
            throw Failure(m_file, "a beam was not erased and brought back");
        return "moved " + count(all.size(), "element") + "\ncopied " + count(copies.size(), "element") +
               "\nerased a beam and brought it back\n";
    }

    AcGeVector3d firstBay(const Frame& frame) const {
        AcGePoint3d points[2];
        for (int i : {0, 1}) {
            AcDbEntity* node = nullptr;
            demand(acdbOpenObject(node, frame.nodes[static_cast<std::size_t>(i)]), "a node cannot be opened");
            AcDbExtents box;
            node->getGeomExtents(box);
            node->close();
            points[i] = box.minPoint();
        }
        return points[1] - points[0];
    }

    std::string m_file, m_system;
    FrameOptions m_options;
    bool m_isBare = false, m_edit = false;
};

} // namespace

std::unique_ptr<taldork::cli::Command> makeExampleCommand() { return std::make_unique<ExampleCommand>(); }

} // namespace structure
