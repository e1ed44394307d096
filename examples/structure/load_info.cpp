#include "structure/load_info.h"

#include "dbx/elem/generic_load.h"
#include "orvshape/element_contexts.h"

#include <iterator>

namespace structure {

namespace {

const wchar_t* nameOf(LoadShape shape) {
    static const wchar_t* const names[] = {L"linear",
                                           L"linear to the middle",
                                           L"quadratic from the start",
                                           L"quadratic to the end",
                                           L"cubic from the start",
                                           L"cubic to the end",
                                           L"quadratic with its peak in the middle",
                                           L"uniform",
                                           L"planar"};
    const auto index = static_cast<std::size_t>(shape);
    return index < std::size(names) ? names[index] : L"";
}

} // namespace

void appendLoadInfo(const std::wstring& heading, const orv::elem::GenericLoad& load, LoadShape shape,
                    orv::ElementInfoContext& info) {
    info.heading(heading);
    info.value(L"Type", std::to_wstring(load.getType()));
    if (load.getDistribution() != orv::elem::kPointLoad)
        info.value(L"Shape", nameOf(shape));
    std::wstring cases, values;
    for (const unsigned int loadCase : load.getLoadCases())
        cases += (cases.empty() ? L"" : L", ") + std::to_wstring(loadCase);
    for (const orv::elem::LoadVertex& vertex : load.getVertices())
        if (!vertex.text.empty())
            values += (values.empty() ? L"" : L", ") + vertex.text;
    info.value(L"Load cases", cases);
    info.value(L"Values", values);
}

} // namespace structure
