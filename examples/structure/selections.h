#pragma once

#include "structure/export.h"

#include "acadstrc.h"
#include "dbid.h"

#include <set>
#include <string>
#include <vector>

class AcDbDatabase;

// Named selections of a drawing: objects that are wanted together again. They stand in the drawing as
// orv::ORV_NamedSelection, each under its name in one dictionary below the named object dictionary:
//
//   named object dictionary -> "TALDORK_SELECTIONS" -> NAME -> ORV_NamedSelection
//
// with the selected ids in m_objects, and m_members and m_names empty. Names are the dictionary's: they keep
// their letters, and are compared without regard to case. A selection owns nothing: an object that is erased
// drops out of what is found.
namespace structure {

extern STRUCTURE_API const wchar_t* const kSelectionDictionary;

// By name. Empty also if the drawing has no dictionary of selections.
STRUCTURE_API std::vector<std::wstring> selectionNames(AcDbDatabase& database);

// Fills `ids` with what is selected and not erased. eOk; eKeyNotFound, with `ids` empty.
STRUCTURE_API Acad::ErrorStatus findSelection(AcDbDatabase& database, const std::wstring& name,
                                              std::set<AcDbObjectId>& ids);

// Makes a selection, or replaces what the present one of that name selects. eOk; eInvalidKey for an empty
// name; eWrongDatabase for an id of another drawing, with nothing changed; the statuses of opening.
STRUCTURE_API Acad::ErrorStatus setSelection(AcDbDatabase& database, const std::wstring& name,
                                             const std::set<AcDbObjectId>& ids);

// Takes what is erased out of all selections. To be called before selections are cloned into another drawing:
// what does not come along would end their lists there. An undo that brings an erased object back does not
// put it back in, unless it takes this back, too. eOk, also without selections; the statuses of opening.
STRUCTURE_API Acad::ErrorStatus forgetErasedMembers(AcDbDatabase& database);

// eOk; eKeyNotFound; the statuses of opening.
STRUCTURE_API Acad::ErrorStatus deleteSelection(AcDbDatabase& database, const std::wstring& name);

} // namespace structure
