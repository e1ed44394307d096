#include "cli/common/drawing.h"
#include "cli/common/open_object.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"
#include "cli/program/commands.h"

#include "dbdict.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "embedded/inventory.h"
#include "platform/text.h"
#include "rxclass.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;
using platform::toUtf8;

// What a row of the class table makes, in the file's own numbers.
constexpr int entityItems = 0x1f2;
constexpr int objectItems = 0x1f3;

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// A kind of object as it is counted: the DXF name, for classes of the class table without what marks it as
/// the product's own ("ACDBPLACEHOLDER", "ACDB_LEADEROBJECTCONTEXTDATA_CLASS"), so that kinds read alike
/// whether the format itself or the class table names them.
std::string kindName(const std::string& dxfName) {
    if (dxfName.rfind("ACDB_", 0) == 0) {
        std::string name = dxfName.substr(5);
        for (const char* mark : {"_CLASS", "_DATA", "_VERSION"})
            if (endsWith(name, mark))
                return name.substr(0, name.size() - std::string(mark).size());
        return name;
    }
    for (const char* mark : {"ACDB", "ACAD_"})
        if (dxfName.rfind(mark, 0) == 0)
            return dxfName.substr(std::string(mark).size());
    return dxfName;
}

bool isProxy(AcDbObjectId id) {
    const AcRxClass* kind = id.objectClass();
    return kind->isDerivedFrom(AcDbProxyObject::desc()) || kind->isDerivedFrom(AcDbProxyEntity::desc());
}

/// A part of the drawing that cannot be opened is a failure of the whole call: an answer without it would
/// look whole.
void require(Acad::ErrorStatus status, const Drawing& drawing, const std::string& what) {
    requireOpen(status, AcDb::kForRead, drawing.path(), what);
}

/// The names in a symbol table, as they are stored, in the table's order.
template <class Table, class Iterator, class Record>
std::vector<std::string> symbolNames(const Drawing& drawing, AcDbObjectId tableId, const std::string& what) {
    const auto table = openNeeded<Table>(tableId, AcDb::kForRead, drawing.path(), what);
    Iterator* made = nullptr;
    require(table->newIterator(made), drawing, what);
    const std::unique_ptr<Iterator> entry(made);
    std::vector<std::string> names;
    for (; !entry->done(); entry->step()) {
        Record* record = nullptr;
        require(entry->getRecord(record, AcDb::kForRead), drawing, "a record of " + what);
        const OpenObject<Record> openRecord(record);
        const ACHAR* name = nullptr;
        require(record->getName(name), drawing, "a name in " + what);
        names.push_back(toUtf8(name));
    }
    return names;
}

std::vector<std::string> namedObjects(const Drawing& drawing) {
    const auto dictionary =
        openNeeded<AcDbDictionary>(drawing.database().namedObjectsDictionaryId(), AcDb::kForRead,
                                   drawing.path(), "the named object dictionary");
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    std::vector<std::string> names;
    for (; !entry->done(); entry->next())
        names.push_back(toUtf8(entry->name()));
    std::sort(names.begin(), names.end());
    return names;
}

/// All that is told of a drawing, as the JSON document; the text for people is made from the same.
Json describeDrawing(const Drawing& drawing, CommandModule* module) {
    AcDbDatabase& database = drawing.database();
    Json classes = Json::array();
    for (const embedded::ClassTableRow& row : embedded::classTable(database))
        classes.push_back({{"number", row.number},
                           {"dxfname", toUtf8(row.dxfName)},
                           {"cppname", toUtf8(row.className)},
                           {"appname", toUtf8(row.applicationName)},
                           {"proxyflag", row.proxyFlags},
                           {"is_zombie", row.wasAZombie ? 1 : 0},
                           {"item_class_id", row.isEntity ? entityItems : objectItems}});

    std::map<std::string, std::size_t> objects, proxies;
    std::size_t total = 0;
    embedded::forEachObject(database, [&](AcDbObjectId id) {
        const std::string kind = toUtf8(embedded::kindOf(id));
        ++objects[kindName(kind)];
        ++total;
        if (isProxy(id))
            ++proxies[kind];
    });

    Json stores; // null when the module, which alone knows, is away
    if (module != nullptr) {
        stores = Json::array();
        for (const StoreSummary& store : module->stores(database)) {
            Json groups = Json::array();
            for (const GroupSummary& group : store.groups)
                groups.push_back({{"kwh", group.kwh}, {"keys", group.keys}, {"records", group.records}});
            stores.push_back(
                {{"name", store.name}, {"hasRecords", store.hasRecords}, {"groups", std::move(groups)}});
        }
    }

    return {{"file", drawing.path()},
            {"version", embedded::fileVersion(database)},
            {"classes", std::move(classes)},
            {"objects", objects},
            {"total", total},
            {"layers", symbolNames<AcDbLayerTable, AcDbLayerTableIterator, AcDbLayerTableRecord>(
                           drawing, database.layerTableId(), "the layer table")},
            {"blocks", symbolNames<AcDbBlockTable, AcDbBlockTableIterator, AcDbBlockTableRecord>(
                           drawing, database.blockTableId(), "the block table")},
            {"named_objects", namedObjects(drawing)},
            {"proxies", proxies},
            {"stores", std::move(stores)}};
}

std::string joined(const Json& names) {
    std::string text;
    for (const auto& name : names)
        text += (text.empty() ? "" : ", ") + name.get<std::string>();
    return text;
}

std::string countsText(const Json& counts) {
    std::string text;
    for (const auto& [kind, count] : counts.items())
        text += padLeft(std::to_string(count.get<std::size_t>()), 8) + "  " + kind + "\n";
    return text;
}

std::string storesText(const Json& stores) {
    if (stores.is_null())
        return "stores: not looked at, since the module did not load\n";
    std::string text = "stores: " + std::to_string(stores.size()) + "\n";
    for (const auto& store : stores) {
        text += "  " + store["name"].get<std::string>();
        if (!store["hasRecords"].get<bool>()) {
            text += ": no records\n";
            continue;
        }
        text += ": " + counted(store["groups"].size(), "group") + "\n";
        for (const auto& group : store["groups"])
            text += "    group " + padRight(std::to_string(group["kwh"].get<int>()), 8) +
                    counted(group["keys"].get<std::size_t>(), "key") + ", " +
                    counted(group["records"].get<std::size_t>(), "record") + "\n";
    }
    return text;
}

std::string forPeople(const Json& drawing) {
    std::string text = drawing["file"].get<std::string>() + ": version " +
                       drawing["version"].get<std::string>() + ", " +
                       counted(drawing["total"].get<std::size_t>(), "object") + "\n";
    text += "objects by class:\n" + countsText(drawing["objects"]);
    text += "classes: " + std::to_string(drawing["classes"].size()) + "\n";
    for (const auto& row : drawing["classes"])
        text += "  " + std::to_string(row["number"].get<int>()) + "  " +
                padRight(row["dxfname"].get<std::string>(), 36) + " " +
                padRight(row["cppname"].get<std::string>(), 38) + " " + row["appname"].get<std::string>() +
                "\n";
    text += "layers: " + joined(drawing["layers"]) + "\n";
    text += "blocks: " + joined(drawing["blocks"]) + "\n";
    text += "named objects: " + joined(drawing["named_objects"]) + "\n";
    std::size_t proxies = 0;
    for (const auto& count : drawing["proxies"])
        proxies += count.get<std::size_t>();
    text += "proxies: " + std::to_string(proxies) + "\n" + countsText(drawing["proxies"]);
    return text + storesText(drawing["stores"]);
}

class Info : public Command {
public:
    explicit Info(CommandModule* module) : m_module(module) {}

    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(&program, "info", "Shows what a drawing is made of",
                                          "Version, objects by class, class table, layers, blocks, proxies, "
                                          "and the record stores with their\n"
                                          "groups, keys and records counted.\n"
                                          "\n"
                                          "Example: taldork info hall.dwg --json");
        command->add_option("FILE", m_file, "the drawing")->required()->option_text(noRemark);
        command->add_flag("--json", m_json, "Print machine-readable JSON");
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        const Json description = describeDrawing(drawing, m_module);
        m_json ? printJson(description) : printText(forPeople(description));
    }

private:
    CommandModule* m_module;
    std::string m_file;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeInfo(CommandModule* module) { return std::make_unique<Info>(module); }

} // namespace taldork::cli
