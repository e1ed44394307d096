#include "orvshape/element_contexts.h"

#include "dbidmap.h"

#include <algorithm>
#include <locale>
#include <sstream>

namespace orv {

ElementInfoContext::Section& ElementInfoContext::current() {
    if (m_sections.empty())
        m_sections.emplace_back();
    return m_sections[m_current];
}

void ElementInfoContext::heading(const std::wstring& title) {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Section& section) { return section.heading == title; });
    m_current = static_cast<std::size_t>(found - m_sections.begin());
    if (found == m_sections.end())
        m_sections.push_back({title, {}});
}

void ElementInfoContext::value(const std::wstring& title, const std::wstring& text) {
    current().values.push_back({title, text});
}

void ElementInfoContext::value(const std::wstring& title, double number, const std::wstring& unit) {
    std::wostringstream shown;
    shown.imbue(std::locale::classic());
    shown << number;
    if (!unit.empty())
        shown << L' ' << unit;
    value(title, shown.str());
}

bool ElementInfoContext::isEmpty() const {
    return std::all_of(m_sections.begin(), m_sections.end(),
                       [](const Section& section) { return section.values.empty(); });
}

ElementCloneContext ElementCloneContext::of(Operation operation, const AcDbObjectId& source,
                                            const AcDbIdMapping& idMapping) {
    ElementCloneContext context;
    context.operation = operation;
    context.occasion = idMapping.deepCloneContext();
    context.source = source;
    context.idMapping = &idMapping;
    if (idMapping.destDb(context.target) != Acad::eOk)
        context.target = nullptr;
    return context;
}

} // namespace orv
