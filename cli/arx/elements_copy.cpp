#include "cli/arx/commands.h"
#include "cli/arx/elements.h"
#include "cli/arx/elements_systems.h"
#include "cli/common/failure.h"
#include "cli/common/handles.h"
#include "cli/common/open_object.h"
#include "cli/common/output.h"
#include "cli/common/table.h"
#include "cli/common/terminal.h"

#include "dbidmap.h"
#include "platform/text.h"
#include "rxclass.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <optional>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string classOf(AcDbObjectId id) {
    const AcRxClass* const kind = id.objectClass();
    return kind != nullptr ? platform::toUtf8(kind->name()) : std::string();
}

bool isEntity(AcDbObjectId id) {
    const AcRxClass* const kind = id.objectClass();
    return kind != nullptr && kind->isDerivedFrom(AcDbEntity::desc());
}

/// "STR_Beam 12 'Girder'" of an element, the class of anything else.
std::string titleOf(AcDbObjectId id) {
    Acad::ErrorStatus status = Acad::eOk;
    FoundElement found;
    found.id = id;
    const auto entity = openObject<AcDbEntity>(id, AcDb::kForRead, status);
    if (entity == nullptr)
        return classOf(id);
    found.entity = entity.get();
    found.element = dynamic_cast<Element*>(entity.get());
    return cli::titleOf(found);
}

/// What became of the objects of one copy, in the order in which the host came to them.
struct Copied {
    std::vector<AcDbIdPair> elements; ///< those that were asked for
    std::vector<AcDbIdPair> others;   ///< what came along
    std::vector<AcDbIdPair> used;     ///< what the target had already
    std::vector<std::string> systems; ///< whose description came along
};

Copied pairsOf(const AcDbIdMapping& mapping) {
    Copied copied;
    AcDbIdMappingIter walk(mapping);
    for (walk.start(); !walk.done(); walk.next()) {
        AcDbIdPair pair;
        if (!walk.getMap(pair) || pair.value().isNull())
            continue;
        (!pair.isCloned() ? copied.used : pair.isPrimary() ? copied.elements : copied.others).push_back(pair);
    }
    return copied;
}

class ElementsCopy : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("elements"), "copy", "Copies elements into another drawing",
            "The elements go into model space of DST with all that they need there: layers, their system,\n"
            "elements that they hold on to. What DST has under the same name is used as it is. Their front\n"
            "end gives the copies what must not be there twice, such as numbers. Prints what was copied,\n"
            "with old and new handles, and saves DST.\n"
            "\n"
            "Example: taldork elements copy a.dwg b.dwg 2A 2B");
        addDrawing(*command, m_source, "SRC", "the drawing that is read");
        addDrawing(*command, m_target, "DST", "the drawing that is changed");
        addHandles(*command, m_handles);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        std::error_code error;
        if (std::filesystem::equivalent(std::filesystem::u8path(m_source), std::filesystem::u8path(m_target),
                                        error))
            throw Failure(m_target, "is source and target at once");
        Drawing source = Drawing::open(m_source);
        Drawing target = Drawing::open(m_target); // last: the one that is worked in
        AcDbIdMapping mapping;
        copy(source, target, mapping);
        Copied copied = pairsOf(mapping);
        copied.systems = bringSystems(source, target, newIds(copied.elements));
        target.save();
        m_json ? printAsJson(copied) : print(copied);
    }

private:
    void copy(const Drawing& source, const Drawing& target, AcDbIdMapping& mapping) const {
        AcDbObjectIdArray ids;
        const auto wanted = findObjects(source, m_handles);
        for (const AcDbObjectId& id : wanted) {
            visitElement(source, id, [&](const FoundElement& found) { requireLive(found); });
            ids.append(id);
        }
        const Acad::ErrorStatus status =
            source.database().wblockCloneObjects(ids, modelSpaceOf(target), mapping, AcDb::kDrcIgnore);
        if (status != Acad::eOk)
            throw Failure(m_target, "the elements cannot be copied: " + statusText(status));
        for (const AcDbObjectId& id : wanted) {
            AcDbIdPair pair(id, AcDbObjectId(), false);
            if (!mapping.compute(pair) || !pair.isCloned())
                throw Failure(m_source, "the element " + handleText(id) + " does not let itself be copied");
        }
    }

    static std::vector<AcDbObjectId> newIds(const std::vector<AcDbIdPair>& pairs) {
        std::vector<AcDbObjectId> ids;
        for (const AcDbIdPair& pair : pairs)
            ids.push_back(pair.value());
        return ids;
    }

    /// Nobody would look after the copy of an element whose code is not there.
    void requireLive(const FoundElement& found) const {
        if (found.element == nullptr)
            throw Failure(m_source, "the element " + handleText(found.id) + " (" + found.className() +
                                        ") cannot be copied: " + found.remark);
    }

    static void print(const Copied& copied) {
        Table table({"old", "new", "copied"});
        std::map<std::string, std::size_t> others;
        std::size_t used = 0;
        for (const AcDbIdPair& pair : copied.elements)
            table.add({handleText(pair.key()), handleText(pair.value()), titleOf(pair.value())});
        for (const AcDbIdPair& pair : copied.others) {
            if (isEntity(pair.value()))
                table.add({handleText(pair.key()), handleText(pair.value()),
                           titleOf(pair.value()) + ", which they need"});
            else
                ++others[classOf(pair.value())];
        }
        for (const AcDbIdPair& pair : copied.used)
            used += isEntity(pair.value()) ? 0 : 1;
        std::string text = table.text() + counted(copied.elements.size(), "element") + " copied";
        for (const std::string& system : copied.systems)
            text += ", the system '" + system + "'";
        for (const auto& [name, count] : others)
            text += ", " + std::to_string(count) + " " + name;
        printText(text +
                  (used != 0 ? "; of what was there already " + counted(used, "object") + " used" : "") +
                  "\n");
    }

    static Json rows(const std::vector<AcDbIdPair>& pairs) {
        Json rows = Json::array();
        for (const AcDbIdPair& pair : pairs)
            rows.push_back({{"from", handleText(pair.key())},
                            {"to", handleText(pair.value())},
                            {"class", classOf(pair.value())}});
        return rows;
    }

    void printAsJson(const Copied& copied) const {
        printJson({{"source", m_source},
                   {"target", m_target},
                   {"copied", rows(copied.elements)},
                   {"with", rows(copied.others)},
                   {"used", rows(copied.used)},
                   {"systems", copied.systems}});
    }

    std::string m_source, m_target;
    std::vector<std::string> m_handles;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeElementsCopy() { return std::make_unique<ElementsCopy>(); }

} // namespace taldork::cli
