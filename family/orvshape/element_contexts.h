#pragma once

#include "acdb.h"
#include "dbid.h"
#include "orvshape/export.h"

#include <string>
#include <vector>

class AcDbDatabase;
class AcDbIdMapping;

namespace orv {

// What is told about an element, for a front end to show: values with titles, under headings. Whoever tells
// appends; the order stays.
struct ORVSHAPE_API ElementInfoContext {
    struct Value {
        std::wstring title;
        std::wstring text;
    };
    struct Section {
        std::wstring heading; // empty for what was told before the first heading
        std::vector<Value> values;
    };

    // What follows goes under that heading: below what stands there already, if it was used before.
    void heading(const std::wstring& title);
    // Numbers are shown with six significant digits and their unit, if there is one, behind a space.
    void value(const std::wstring& title, const std::wstring& text);
    void value(const std::wstring& title, double number, const std::wstring& unit = std::wstring());

    // In the order in which the headings came; one without values is among them.
    const std::vector<Section>& sections() const { return m_sections; }
    bool isEmpty() const;

private:
    Section& current();

    std::vector<Section> m_sections;
    std::size_t m_current = 0;
};

// What those who may forbid it get to know about a cloning that is going to be done.
struct ElementCloneContext {
    // kNone: a copy inside of the drawing that no id mapping is kept for.
    enum Operation { kNone = 0, kDeepClone = 1, kWblockClone = 2 };

    Operation operation = kNone;
    // On which occasion, as the host says; kDcCopy where it says nothing.
    AcDb::DeepCloneType occasion = AcDb::kDcCopy;
    // The element that is to be cloned; null for one in no drawing.
    AcDbObjectId source;
    // The drawing that gets the clone; null while that is not known.
    AcDbDatabase* target = nullptr;
    // What was cloned so far in the same run, or null. Not owned.
    const AcDbIdMapping* idMapping = nullptr;

    // The clone stays in the drawing of its source.
    bool isInsideDrawing() const { return target == nullptr || target == source.database(); }
    // Of a cloning that the host runs: the rest is taken from the mapping.
    static ORVSHAPE_API ElementCloneContext of(Operation operation, const AcDbObjectId& source,
                                               const AcDbIdMapping& idMapping);
};

} // namespace orv
