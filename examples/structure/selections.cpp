#include "structure/selections.h"

#include "arx/dictionary_utils.h"
#include "dbx/NamedSelection.h"

#include "dbdict.h"
#include "dbmain.h"

#include <algorithm>
#include <memory>

namespace structure {

using orv::ORV_NamedSelection;

const wchar_t* const kSelectionDictionary = L"TALDORK_SELECTIONS";

namespace {

AcDbObjectId dictionaryOf(AcDbDatabase& database, bool create) {
    AcDbObjectId top = database.namedObjectsDictionaryId();
    return orv::acad::get_subDict_id(top, kSelectionDictionary, create, &database);
}

// The entry under a name, open as asked. eKeyNotFound without one.
Acad::ErrorStatus openSelection(AcDbDatabase& database, const std::wstring& name, AcDb::OpenMode mode,
                                ORV_NamedSelection*& selection) {
    selection = nullptr;
    const AcDbObjectId id = dictionaryOf(database, false);
    if (id.isNull())
        return Acad::eKeyNotFound;
    AcDbDictionary* dictionary = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(dictionary, id, AcDb::kForRead);
    if (es != Acad::eOk)
        return es;
    es = dictionary->getAt(name.c_str(), selection, mode);
    dictionary->close();
    return es;
}

Acad::ErrorStatus addSelection(AcDbDatabase& database, const std::wstring& name,
                               ORV_NamedSelection*& selection) {
    AcDbDictionary* dictionary = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(dictionary, dictionaryOf(database, true), AcDb::kForWrite);
    if (es != Acad::eOk)
        return es;
    auto fresh = std::make_unique<ORV_NamedSelection>();
    AcDbObjectId id;
    es = dictionary->setAt(name.c_str(), fresh.get(), id);
    dictionary->close();
    if (es == Acad::eOk)
        selection = fresh.release(); // the drawing's from here on
    return es;
}

} // namespace

std::vector<std::wstring> selectionNames(AcDbDatabase& database) {
    std::vector<std::wstring> names;
    AcDbDictionary* dictionary = nullptr;
    const AcDbObjectId id = dictionaryOf(database, false);
    if (id.isNull() || acdbOpenObject(dictionary, id, AcDb::kForRead) != Acad::eOk)
        return names;
    const std::unique_ptr<AcDbDictionaryIterator> entries(dictionary->newIterator());
    for (; !entries->done(); entries->next())
        if (entries->objectId().objectClass() == ORV_NamedSelection::desc())
            names.emplace_back(entries->name());
    dictionary->close();
    std::sort(names.begin(), names.end());
    return names;
}

Acad::ErrorStatus findSelection(AcDbDatabase& database, const std::wstring& name,
                                std::set<AcDbObjectId>& ids) {
    ids.clear();
    ORV_NamedSelection* selection = nullptr;
    const Acad::ErrorStatus es = openSelection(database, name, AcDb::kForRead, selection);
    if (es != Acad::eOk)
        return es;
    for (const AcDbObjectId& id : selection->m_objects)
        if (id.isValid() && !id.isErased())
            ids.insert(id);
    selection->close();
    return Acad::eOk;
}

Acad::ErrorStatus setSelection(AcDbDatabase& database, const std::wstring& name,
                               const std::set<AcDbObjectId>& ids) {
    if (name.empty())
        return Acad::eInvalidKey;
    for (const AcDbObjectId& id : ids)
        if (id.database() != &database)
            return Acad::eWrongDatabase;
    ORV_NamedSelection* selection = nullptr;
    Acad::ErrorStatus es = openSelection(database, name, AcDb::kForWrite, selection);
    if (es == Acad::eKeyNotFound)
        es = addSelection(database, name, selection);
    if (es != Acad::eOk)
        return es;
    selection->assertWriteEnabled();
    selection->m_objects = ids;
    selection->close();
    return Acad::eOk;
}

Acad::ErrorStatus forgetErasedMembers(AcDbDatabase& database) {
    for (const std::wstring& name : selectionNames(database)) {
        ORV_NamedSelection* selection = nullptr;
        const Acad::ErrorStatus es = openSelection(database, name, AcDb::kForWrite, selection);
        if (es != Acad::eOk)
            return es;
        std::set<AcDbObjectId> left;
        for (const AcDbObjectId& id : selection->m_objects)
            if (id.isValid() && !id.isErased())
                left.insert(id);
        if (left != selection->m_objects) {
            selection->assertWriteEnabled();
            selection->m_objects.swap(left);
        }
        selection->close();
    }
    return Acad::eOk;
}

Acad::ErrorStatus deleteSelection(AcDbDatabase& database, const std::wstring& name) {
    ORV_NamedSelection* selection = nullptr;
    Acad::ErrorStatus es = openSelection(database, name, AcDb::kForWrite, selection);
    if (es != Acad::eOk)
        return es;
    es = selection->erase();
    selection->close();
    return es;
}

} // namespace structure
