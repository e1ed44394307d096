#include "cli/arx/elements_numbering.h"

#include "cli/arx/report_scope.h"
#include "cli/common/failure.h"
#include "cli/common/handles.h"
#include "cli/common/open_object.h"

#include "dbx/elem/plugin_general.h"
#include "dbx/unique_numbering/unique_numbering.h"

#include <algorithm>
#include <climits>
#include <map>

namespace taldork::cli {

using orv::elem::Plugin_General;
using orv::numbering::NumberingBucket;

namespace {

std::map<unsigned int, std::vector<AcDbObjectId>> byNumber(const std::vector<NumberedElement>& elements) {
    std::map<unsigned int, std::vector<AcDbObjectId>> ids;
    for (const NumberedElement& element : elements)
        if (element.number != 0)
            ids[element.number].push_back(element.id);
    return ids;
}

/// The order of the new numbers: by the old ones, those without one last; in the order of handles otherwise.
std::vector<NumberedElement> inOrder(const ClassNumbers& numbers) {
    std::vector<NumberedElement> sorted = numbers.elements;
    std::stable_sort(sorted.begin(), sorted.end(), [](const NumberedElement& a, const NumberedElement& b) {
        return (a.number == 0 ? UINT_MAX : a.number - 1) < (b.number == 0 ? UINT_MAX : b.number - 1);
    });
    return sorted;
}

} // namespace

std::vector<ClassNumbers::Duplicate> ClassNumbers::duplicates() const {
    std::vector<Duplicate> found;
    for (auto& [number, ids] : byNumber(elements))
        if (ids.size() > 1)
            found.push_back({number, ids});
    return found;
}

std::vector<ClassNumbers::Gap> ClassNumbers::gaps() const {
    std::vector<Gap> found;
    unsigned int next = 1;
    for (const auto& [number, ids] : byNumber(elements)) {
        if (number != next)
            found.push_back({next, number - 1});
        next = number + 1;
    }
    return found;
}

std::vector<AcDbObjectId> ClassNumbers::unnumbered() const {
    std::vector<AcDbObjectId> ids;
    for (const NumberedElement& element : elements)
        if (element.number == 0)
            ids.push_back(element.id);
    return ids;
}

unsigned int ClassNumbers::highest() const {
    unsigned int highest = 0;
    for (const NumberedElement& element : elements)
        highest = std::max(highest, element.number);
    return highest;
}

DrawingNumbers readNumbers(const Drawing& drawing, const std::string& onlyClass) {
    const AcDbObjectId modelSpace = modelSpaceOf(drawing);
    std::map<std::string, ClassNumbers> classes;
    DrawingNumbers all;
    forEachElement(drawing, [&](const FoundElement& found) {
        if (!onlyClass.empty() && !isOfClass(found, onlyClass))
            return;
        all.unknown += found.element == nullptr;
        const Plugin_General* const general = found.element != nullptr ? generalOf(*found.element) : nullptr;
        if (general == nullptr || found.entity->ownerId() != modelSpace)
            return;
        ClassNumbers& numbers = classes[found.className()];
        numbers.className = found.className();
        numbers.dxfName = found.dxfName();
        numbers.elements.push_back({found.id, general->getNumber()});
    });
    for (auto& [name, numbers] : classes)
        all.classes.push_back(std::move(numbers));
    return all;
}

std::vector<NumberChange> planRenumbering(const ClassNumbers& numbers) {
    // What the bucket thinks of numbers that it is told is no matter of the drawing.
    const ReportScope quiet([](const ReportScope::Report&) {});
    const auto bucket =
        NumberingBucket::acquire(nullptr, [](const AcDbObjectId&) { return boost::optional<int>(); });
    std::vector<NumberChange> down, up;
    int next = 1;
    for (const NumberedElement& element : inOrder(numbers)) {
        bucket->allocate(element.id, next++);
        const auto number = static_cast<unsigned int>(*bucket->getOrCreateNo(element.id));
        if (number < element.number)
            down.push_back({element.id, element.number, number});
        else if (number != element.number)
            up.push_back({element.id, element.number, number});
    }
    // Whoever goes down follows those below, whoever goes up those above: each number is left before it is
    // given again.
    std::reverse(up.begin(), up.end());
    down.insert(down.end(), up.begin(), up.end());
    return down;
}

void renumber(const Drawing& drawing, const std::vector<NumberChange>& changes) {
    if (!changes.empty() && Plugin_General::getProtExt() == nullptr)
        throw Failure(drawing.path(), "no front end that gives numbers is loaded");
    for (const NumberChange& change : changes) {
        const std::string handle = handleText(change.id);
        const auto entity =
            openNeeded<AcDbEntity>(change.id, AcDb::kForWrite, drawing.path(), "the element " + handle);
        Plugin_General* const general = generalOf(dynamic_cast<const Element&>(*entity));
        general->setNumber(change.to);
        if (general->getNumber() != change.to)
            throw Failure(drawing.path(), "the element " + handle + " does not take the number " +
                                              std::to_string(change.to) + ", it has " +
                                              std::to_string(general->getNumber()));
    }
}

} // namespace taldork::cli
