#include "cli/arx/selections.h"

#include "cli/common/failure.h"
#include "cli/common/open_object.h"

#include "arx/dictionary_utils.h"
#include "dbdict.h"
#include "platform/text.h"

namespace taldork::cli {

using orv::ORV_NamedSelection;

namespace {

constexpr const wchar_t* kDictionary = L"TALDORK_SELECTIONS";
constexpr const char* kDictionaryTitle = "the dictionary of selections";

/// A name may outlive what it stood for.
bool isThere(const AcDbObjectId& id) { return id.objectClass() != nullptr && !id.isErased(); }

/// Null if the drawing has no selections.
AcDbObjectId dictionaryOf(const Drawing& drawing) {
    const auto named =
        openNeeded<AcDbDictionary>(drawing.database().namedObjectsDictionaryId(), AcDb::kForRead,
                                   drawing.path(), "the named object dictionary");
    AcDbObjectId id;
    named->getAt(kDictionary, id);
    return id;
}

AcDbObjectId makeDictionary(const Drawing& drawing) {
    const AcDbObjectId present = dictionaryOf(drawing);
    if (!present.isNull())
        return present;
    const auto named =
        openNeeded<AcDbDictionary>(drawing.database().namedObjectsDictionaryId(), AcDb::kForWrite,
                                   drawing.path(), "the named object dictionary");
    auto fresh = std::make_unique<AcDbDictionary>();
    AcDbObjectId id;
    requireOpen(named->setAt(kDictionary, fresh.get(), id), AcDb::kForWrite, drawing.path(),
                kDictionaryTitle);
    fresh.release()->close();
    return id;
}

/// Null if there is none of that name.
AcDbObjectId selectionId(const Drawing& drawing, const std::string& name) {
    const AcDbObjectId dictionary = dictionaryOf(drawing);
    AcDbObjectId id;
    if (!dictionary.isNull())
        openNeeded<AcDbDictionary>(dictionary, AcDb::kForRead, drawing.path(), kDictionaryTitle)
            ->getAt(platform::fromUtf8(name).c_str(), id);
    return isThere(id) ? id : AcDbObjectId();
}

AcDbObjectId neededId(const Drawing& drawing, const std::string& name) {
    const AcDbObjectId id = selectionId(drawing, name);
    if (id.isNull())
        throw Failure(drawing.path(),
                      "has no selection '" + name + "' ('taldork select list' names those that there are)");
    return id;
}

std::string titleOf(const std::string& name) { return "the selection '" + name + "'"; }

void makeSelection(const Drawing& drawing, const std::string& name, const std::set<AcDbObjectId>& objects) {
    const auto dictionary = openNeeded<AcDbDictionary>(makeDictionary(drawing), AcDb::kForWrite,
                                                       drawing.path(), kDictionaryTitle);
    auto fresh = std::make_unique<ORV_NamedSelection>();
    fresh->m_objects = objects;
    AcDbObjectId id;
    requireOpen(dictionary->setAt(platform::fromUtf8(name).c_str(), fresh.get(), id), AcDb::kForWrite,
                drawing.path(), titleOf(name));
    fresh.release()->close();
}

} // namespace

std::vector<std::string> selectionNames(const Drawing& drawing) {
    std::vector<std::string> names;
    const AcDbObjectId id = dictionaryOf(drawing);
    if (id.isNull())
        return names;
    const auto dictionary = openNeeded<AcDbDictionary>(id, AcDb::kForRead, drawing.path(), kDictionaryTitle);
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    for (; !entry->done(); entry->next())
        if (isThere(entry->objectId()))
            names.push_back(platform::toUtf8(entry->name()));
    return names;
}

void visitSelection(const Drawing& drawing, const std::string& name,
                    const std::function<void(const ORV_NamedSelection&)>& visit) {
    const auto selection = openNeeded<ORV_NamedSelection>(neededId(drawing, name), AcDb::kForRead,
                                                          drawing.path(), titleOf(name));
    visit(*selection);
}

bool setSelection(const Drawing& drawing, const std::string& name, const std::vector<AcDbObjectId>& ids) {
    const std::set<AcDbObjectId> objects(ids.begin(), ids.end());
    const AcDbObjectId present = selectionId(drawing, name);
    if (present.isNull()) {
        makeSelection(drawing, name, objects);
        return true;
    }
    const auto selection =
        openNeeded<ORV_NamedSelection>(present, AcDb::kForWrite, drawing.path(), titleOf(name));
    selection->assertWriteEnabled();
    selection->m_objects = objects;
    return false;
}

void deleteSelection(const Drawing& drawing, const std::string& name) {
    const AcDbObjectId id = neededId(drawing, name);
    requireOpen(
        openNeeded<AcDbDictionary>(dictionaryOf(drawing), AcDb::kForWrite, drawing.path(), kDictionaryTitle)
            ->remove(id),
        AcDb::kForWrite, drawing.path(), kDictionaryTitle);
    const auto selection = openNeeded<ORV_NamedSelection>(id, AcDb::kForWrite, drawing.path(), titleOf(name));
    requireOpen(selection->erase(), AcDb::kForWrite, drawing.path(), titleOf(name));
}

} // namespace taldork::cli
