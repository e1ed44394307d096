#include "orvshape/element_contexts.h"

#include "curve_fixture.h"
#include "dbidmap.h"

using orv::ElementCloneContext;
using orv::ElementInfoContext;

namespace {

std::vector<std::wstring> told(const ElementInfoContext& info) {
    std::vector<std::wstring> lines;
    for (const auto& section : info.sections()) {
        lines.push_back(L"[" + section.heading + L"]");
        for (const auto& value : section.values)
            lines.push_back(value.title + L"=" + value.text);
    }
    return lines;
}

} // namespace

TEST(ElementInfoContext, ValuesStandUnderTheirHeadings) {
    ElementInfoContext info;
    EXPECT_TRUE(info.isEmpty());
    info.value(L"Handle", L"1F");
    info.heading(L"Beam");
    info.value(L"Length", 12.5, L"m");
    info.heading(L"Loads");
    EXPECT_FALSE(info.isEmpty());
    info.heading(L"Beam");
    info.value(L"Ratio", 1.0 / 3.0);
    EXPECT_EQ(told(info), (std::vector<std::wstring>{L"[]", L"Handle=1F", L"[Beam]", L"Length=12.5 m",
                                                     L"Ratio=0.333333", L"[Loads]"}));
}

TEST(ElementInfoContext, HeadingsAloneAreNothing) {
    ElementInfoContext info;
    info.heading(L"Beam");
    EXPECT_TRUE(info.isEmpty());
    EXPECT_EQ(info.sections().size(), 1u);
}

class CloneContext : public CurveDrawing {};

TEST_F(CloneContext, TakesWhatTheMappingKnows) {
    const AcDbObjectId id = addHook();
    AcDbDatabase other(true);
    AcDbIdMapping mapping;
    ElementCloneContext unknown = ElementCloneContext::of(ElementCloneContext::kDeepClone, id, mapping);
    EXPECT_EQ(unknown.operation, ElementCloneContext::kDeepClone);
    EXPECT_EQ(unknown.source, id);
    EXPECT_EQ(unknown.target, nullptr);
    EXPECT_EQ(unknown.idMapping, &mapping);
    EXPECT_TRUE(unknown.isInsideDrawing());
    mapping.setDestDb(&other);
    const auto away = ElementCloneContext::of(ElementCloneContext::kWblockClone, id, mapping);
    EXPECT_EQ(away.target, &other);
    EXPECT_FALSE(away.isInsideDrawing());
    mapping.setDestDb(m_database.get());
    EXPECT_TRUE(ElementCloneContext::of(ElementCloneContext::kDeepClone, id, mapping).isInsideDrawing());
}
