#include "cli/arx/commands.h"
#include "cli/arx/store.h"
#include "cli/arx/system_box.h"
#include "cli/arx/system_words.h"
#include "cli/arx/systems.h"
#include "cli/common/failure.h"
#include "cli/common/output.h"

#include "base/exceptions.h"
#include "dbx/doc/converter.h"
#include "dbx/doc/system.h"
#include "dbx/doc/system_transform.h"
#include "platform/text.h"

namespace taldork::cli {

using namespace orv::cdb;

namespace {

/// How finely analysis programs divide; the module's own answer where no record tells it.
constexpr std::int32_t usualDivision = 10000;

void setAxis(float (&target)[3], const AcGeVector3d& axis) {
    target[0] = static_cast<float>(axis.x);
    target[1] = static_cast<float>(axis.y);
    target[2] = static_cast<float>(axis.z);
}

/// The store's axes in terms of the drawing, each as long as the scale, so that who measures them finds it.
orv::typeCDB_SYST::Axes storeAxes(orv::SYSTEM kind, orv::GravityOrientation gravity, double scale) {
    orv::Converter converter;
    converter.prepare(orv::detail::rotationWcs2Cdb(orv::System::gravityDirectionVectorWcs(kind),
                                                   orv::detail::gravityVectorCdb(gravity)),
                      scale);
    orv::typeCDB_SYST::Axes axes{};
    setAxis(axes.x, converter.normalFromCdb(AcGeVector3d::kXAxis) * scale);
    setAxis(axes.y, converter.normalFromCdb(AcGeVector3d::kYAxis) * scale);
    setAxis(axes.z, converter.normalFromCdb(AcGeVector3d::kZAxis) * scale);
    return axes;
}

class SystemsCreate : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("systems"), "create", "Makes a structural system in a drawing",
            "Makes the store, unless it is there, writes the records of its system (10/0, 10/100, 10/101,\n"
            "10/102) and saves the drawing. A store that has a system already is refused. --gravity is the\n"
            "store's axis along which gravity acts; in the drawing it acts along -z, in a plane system "
            "along\n"
            "-y. --unit is the unit that the drawing is made in, while the store counts in metres. Without\n"
            "--box the system reaches from 0,0,0 to 20,20,0 in the store.\n"
            "\n"
            "Example: taldork systems create hall.dwg ASDWG --kind space --gravity -z --unit mm \\\n"
            "             --box 0,0,0,30000,12000,8000");
        addDrawing(*command, m_file);
        addSystem(*command, m_name);
        addWord(*command, "--kind", m_kind, "Kind of system", "space|plane|plate", checkKind);
        addWord(*command, "--gravity", m_gravity, "Gravity axis in the store", "+x|-x|+y|-y|+z|-z",
                checkGravity);
        addWord(*command, "--unit", m_unit, "Unit of length of the drawing", "m|cm|mm", checkUnit);
        command->add_option("--box", m_box, "Two opposite corners in the drawing, the lower one first")
            ->option_text("X,Y,Z,X,Y,Z")
            ->check(CLI::Validator(checkBox, ""));
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        refuseOtherCase(drawing);
        const bool made = createStore(drawing.database(), m_name);
        Store store(drawing, m_name);
        if (store.cdb().exists(10, 0))
            throw Failure(m_file, "the store '" + m_name +
                                      "' has a system already ('taldork systems set' changes it)");
        writeRecords(store.cdb());
        drawing.save();
        printText("made the system '" + m_name + "': " + m_kind + ", gravity " + m_gravity + ", unit " +
                  m_unit + (made ? "" : "; the store was there already") + "\n");
    }

private:
    static void addWord(CLI::App& command, const std::string& name, std::string& word,
                        const std::string& meaning, const std::string& words,
                        std::string (*check)(const std::string&)) {
        command.add_option(name, word, meaning)
            ->required()
            ->option_text(words + " REQUIRED")
            ->check(CLI::Validator(check, ""));
    }

    /// A drawing's dictionaries take names that differ in case alone for one, the module's registry does not.
    void refuseOtherCase(const Drawing& drawing) const {
        for (const std::string& present : systemStores(drawing.database()))
            if (present != m_name &&
                platform::equalNoCase(platform::fromUtf8(present), platform::fromUtf8(m_name)))
                throw Failure(m_file, "has a store '" + present + "', which differs from '" + m_name +
                                          "' in upper and lower case alone");
    }

    /// As an analysis program leaves them: its own first, the rest as the module derives it.
    void writeRecords(NodCdb& cdb) const {
        orv::PersistentSystemInfo info;
        info.drawingUnit = *parseUnit(m_unit);
        info.drawing_unit_wcs2cdb = *orv::detail::scaleOfUnit(info.drawingUnit);
        orv::typeCDB_SYST syst{};
        syst.iprob = problemNumber(*parseKind(m_kind));
        syst.iachs = *parseGravity(m_gravity);
        syst.igdiv = usualDivision;
        syst.m_tg = storeAxes(*parseKind(m_kind), *parseGravity(m_gravity), info.drawing_unit_wcs2cdb);
        demand(cdb.write(10, 102, &info, sizeof info, kFirstRecord) == CD_ERR_NONE, "10/102");
        demand(cdb.write(10, 0, &syst, sizeof syst, kFirstRecord) == CD_ERR_NONE, "10/0");

        orv::System system;
        read(system, cdb);
        if (m_box.empty())
            system.setDefaultExtents();
        else
            setBox(system, *parseBox(m_box), m_file);
        demand(system.updateTo(cdb), "10/0");
        demand(system.updateVisTo(cdb), "10/100");
        demand(system.updateSettingsTo(cdb), "10/101");
    }

    /// As the module takes it up; settings that the store has already come along.
    void read(orv::System& system, NodCdb& cdb) const {
        try {
            demand(system.updateFrom(cdb), "10/0");
            system.updateVisFrom(cdb);
            system.updateSettingsFrom(cdb);
        } catch (const orv::Exception& damage) {
            throw Failure(m_file,
                          "the records that '" + m_name + "' has already cannot be read: " + damage.what());
        }
    }

    void demand(bool done, const std::string& key) const {
        if (!done)
            throw Failure(m_file, "the record " + key + " of '" + m_name + "' cannot be written");
    }

    std::string m_file, m_name, m_kind, m_gravity, m_unit, m_box;
};

} // namespace

std::unique_ptr<Command> makeSystemsCreate() { return std::make_unique<SystemsCreate>(); }

} // namespace taldork::cli
