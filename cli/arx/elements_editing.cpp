#include "cli/arx/elements_editing.h"

#include "cli/common/failure.h"
#include "cli/common/handles.h"
#include "cli/common/open_object.h"

#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_base.h"

#include "dbidmap.h"
#include "embedded/session.h"
#include "gemat3d.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

namespace taldork::cli {

namespace {

struct KindRow {
    EditStep::Kind kind;
    const char* word;
    const wchar_t* command; ///< its name in the editor
    bool hasHandles;
    bool hasOffset;
};

constexpr KindRow kKinds[] = {{EditStep::kMove, "move", L"MOVE", true, true},
                              {EditStep::kCopy, "copy", L"COPY", true, true},
                              {EditStep::kErase, "erase", L"ERASE", true, false},
                              {EditStep::kUndo, "undo", L"U", false, false},
                              {EditStep::kRedo, "redo", L"REDO", false, false}};

const KindRow& rowOf(EditStep::Kind kind) {
    return *std::find_if(std::begin(kKinds), std::end(kKinds),
                         [kind](const KindRow& row) { return row.kind == kind; });
}

/// What an element is called, by its id, for all that a drawing has.
std::map<AcDbObjectId, std::string> elementTitles(const Drawing& drawing) {
    std::map<AcDbObjectId, std::string> titles;
    forEachElement(drawing, [&](const FoundElement& found) {
        titles[found.id] = handleText(found.id) + " " + titleOf(found);
    });
    return titles;
}

std::vector<std::string> missingFrom(const std::map<AcDbObjectId, std::string>& titles,
                                     const std::map<AcDbObjectId, std::string>& others) {
    std::vector<std::string> missing;
    for (const auto& [id, title] : titles)
        if (others.count(id) == 0)
            missing.push_back(title);
    return missing;
}

AcGeMatrix3d moving(const Point& offset) {
    AcGeMatrix3d matrix;
    matrix.setTranslation(AcGeVector3d(offset[0], offset[1], offset[2]));
    return matrix;
}

bool isLoad(const FoundElement& found) {
    if (found.element == nullptr)
        return false;
    if (dynamic_cast<const orv::elem::LoadBase*>(found.element) != nullptr)
        return true;
    const auto plugins = found.element->getConstPluginIterator();
    return std::any_of(plugins.begin(), plugins.end(), [](const auto& plugin) {
        return dynamic_cast<const orv::elem::ILoad*>(plugin.get()) != nullptr;
    });
}

/// A load lets itself be cloned if what it acts on has been: loads come last, in whatever order they are
/// named.
AcDbObjectIdArray inOrderOfCloning(const Drawing& drawing, const std::vector<AcDbObjectId>& ids) {
    AcDbObjectIdArray ordered, loads;
    for (const AcDbObjectId& id : ids)
        visitElement(drawing, id,
                     [&](const FoundElement& found) { (isLoad(found) ? loads : ordered).append(id); });
    ordered.append(loads);
    return ordered;
}

std::string takeLast(std::vector<std::string>& from, std::vector<std::string>& to) {
    to.push_back(from.back());
    from.pop_back();
    return to.back();
}

} // namespace

std::string EditStep::text() const {
    std::string text = rowOf(kind).word;
    for (const std::string& handle : handles)
        text += " " + handle;
    if (rowOf(kind).hasOffset)
        text += " " + numberText(offset[0]) + "," + numberText(offset[1]) + "," + numberText(offset[2]);
    return text;
}

std::optional<EditStep> parseEditStep(const std::string& line) {
    std::istringstream in(line);
    std::string word;
    in >> word;
    const auto row = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const KindRow& one) { return one.word == word; });
    if (row == std::end(kKinds))
        return std::nullopt;
    EditStep step;
    step.kind = row->kind;
    step.handles.assign(std::istream_iterator<std::string>(in), std::istream_iterator<std::string>());
    if (row->hasOffset) {
        const auto offset = step.handles.empty() ? std::nullopt : parsePoint(step.handles.back());
        if (!offset)
            return std::nullopt;
        step.offset = *offset;
        step.handles.pop_back();
    }
    const bool areHandles =
        std::all_of(step.handles.begin(), step.handles.end(),
                    [](const std::string& text) { return parseHandle(text).has_value(); });
    if (!areHandles || step.handles.empty() == row->hasHandles)
        return std::nullopt;
    return step;
}

ElementEditing::Change ElementEditing::run(const EditStep& step) {
    const auto before = elementTitles(m_drawing);
    Change change;
    if (step.kind == EditStep::kUndo)
        change.undone = undo();
    else if (step.kind == EditStep::kRedo)
        change.undone = redo();
    else
        runCommand(step);
    const auto after = elementTitles(m_drawing);
    change.came = missingFrom(after, before);
    change.went = missingFrom(before, after);
    return change;
}

void ElementEditing::runCommand(const EditStep& step) {
    const auto ids = findObjects(m_drawing, step.handles);
    for (const AcDbObjectId& id : ids)
        visitElement(m_drawing, id, [](const FoundElement&) {});
    embedded::runCommand(m_drawing.database(), rowOf(step.kind).command, [&] {
        if (step.kind == EditStep::kCopy)
            copy(ids, step.offset);
        for (const AcDbObjectId& id : ids) {
            if (step.kind == EditStep::kMove)
                move(id, step.offset);
            else if (step.kind == EditStep::kErase)
                erase(id);
        }
        return true;
    });
    m_done.push_back(step.text());
    m_undone.clear();
}

void ElementEditing::move(AcDbObjectId id, const Point& offset) const {
    const std::string what = "the element " + handleText(id);
    const auto entity = openNeeded<AcDbEntity>(id, AcDb::kForWrite, m_drawing.path(), what);
    const Acad::ErrorStatus status = entity->transformBy(moving(offset));
    if (status != Acad::eOk)
        throw Failure(m_drawing.path(), what + " cannot be moved: " + statusText(status));
}

void ElementEditing::copy(const std::vector<AcDbObjectId>& ids, const Point& offset) const {
    AcDbIdMapping mapping;
    const AcDbObjectIdArray originals = inOrderOfCloning(m_drawing, ids);
    const Acad::ErrorStatus status =
        m_drawing.database().deepCloneObjects(originals, modelSpaceOf(m_drawing), mapping);
    if (status != Acad::eOk)
        throw Failure(m_drawing.path(), "the elements cannot be copied: " + statusText(status));
    for (const AcDbObjectId& id : ids) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        if (!mapping.compute(pair) || pair.value().isNull())
            throw Failure(m_drawing.path(),
                          "the element " + handleText(id) + " does not let itself be copied");
        move(pair.value(), offset);
    }
}

void ElementEditing::erase(AcDbObjectId id) const {
    if (id.isErased())
        return; // with one that was named before it
    const std::string what = "the element " + handleText(id);
    const auto entity = openNeeded<AcDbEntity>(id, AcDb::kForWrite, m_drawing.path(), what);
    const Acad::ErrorStatus status = entity->erase();
    if (status != Acad::eOk)
        throw Failure(m_drawing.path(), what + " cannot be erased: " + statusText(status));
}

// What the drawing's opening left in the history is not a step.
std::string ElementEditing::undo() {
    if (m_done.empty() || !embedded::undo(m_drawing.database()))
        throw Failure(m_drawing.path(), "there is nothing to undo");
    return takeLast(m_done, m_undone);
}

std::string ElementEditing::redo() {
    if (m_undone.empty() || !embedded::redo(m_drawing.database()))
        throw Failure(m_drawing.path(), "there is nothing to redo");
    return takeLast(m_undone, m_done);
}

} // namespace taldork::cli
