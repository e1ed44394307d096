#include "embedded/session.h"
#include "module/dbx/elem/filed_values.h"
#include "module/dbx/elem/value_holder.h"
#include "platform/files.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace testing_support;
using orv::AcadObjectProperties;
using orv::PropertyTree;

namespace {

// What became of a value on its way through a file: ids are those of the other drawing then.
bool sameInFile(const boost::any& a, const boost::any& b) {
    if (a.type() != b.type())
        return false;
    if (a.type() == typeid(AcDbObjectId))
        return boost::any_cast<AcDbObjectId>(a).handle() == boost::any_cast<AcDbObjectId>(b).handle();
    if (a.type() == typeid(AcDbSoftPointerId))
        return boost::any_cast<AcDbSoftPointerId>(a).handle() ==
               boost::any_cast<AcDbSoftPointerId>(b).handle();
    return identical(a, b);
}

bool sameInFile(const PropertyTree& a, const PropertyTree& b) {
    if (a.size() != b.size() || !sameInFile(a.data(), b.data()))
        return false;
    for (auto one = a.begin(), other = b.begin(); one != a.end(); ++one, ++other)
        if (one->first != other->first || !sameInFile(one->second, other->second))
            return false;
    return true;
}

bool sameInFile(const AcadObjectProperties& a, const AcadObjectProperties& b) {
    if (a.size() != b.size())
        return false;
    for (auto one = a.begin(), other = b.begin(); one != a.end(); ++one, ++other)
        if (one->first != other->first || !sameInFile(one->second->value(), other->second->value()))
            return false;
    return true;
}

// A drawing with one holder, saved and read again.
class SavedHolder {
public:
    SavedHolder() : m_folder(platform::makeTemporaryFolder()) { registerValueHolder(); }
    ~SavedHolder() { platform::removeFile(file()); }

    std::wstring file() const { return platform::joinPath(m_folder, L"values.dwg"); }
    std::vector<AcDbObjectId> ids() const { return {AcDbObjectId(), m_drawing.named, m_drawing.base}; }

    // The status of saving.
    Acad::ErrorStatus save(const PropertyTree& tree, const AcadObjectProperties& properties) {
        auto* const holder = new ValueHolder;
        holder->tree = tree;
        holder->properties = properties;
        putObject(m_drawing.named, L"HOLDER", holder);
        return m_drawing.db.saveAs(file().c_str());
    }
    // Hands the holder of the file to `look`, or null if it is none.
    void read(const std::function<void(ValueHolder*)>& look) const {
        AcDbDatabase db(false);
        if (db.readDwgFile(file().c_str()) != Acad::eOk)
            return look(nullptr);
        const AcDbObjectId id = entryAt(db.namedObjectsDictionaryId(), {L"KELMORAN", L"ASDWG", L"HOLDER"});
        ValueHolder* holder = nullptr;
        acdbOpenObject(holder, id, AcDb::kForRead);
        look(holder);
        if (holder != nullptr)
            holder->close();
    }

private:
    std::wstring m_folder;
    StoreDrawing m_drawing;
};

} // namespace

TEST(ValuesInDrawing, EveryTypeComesBackFromTheFile) {
    SavedHolder saved;
    const AcDbObjectId id = saved.ids().back();
    PropertyTree tree;
    addNode(tree, "nothing");
    addNode(tree, "", true);
    addNode(tree, "number", -5);
    addNode(tree, "double", 0.1);
    addNode(tree, "text", std::string("a\0\xff", 3));
    addNode(tree, "id", id);
    addNode(tree, "soft", AcDbSoftPointerId(id));
    addNode(tree, "point", AcGePoint3d(1, 2, 3));
    addNode(tree, "vector", AcGeVector3d(4, 5, 6));
    addNode(addNode(tree, "matrix", numberedMatrix()), "below", 1);
    AcadObjectProperties properties;
    properties.add(1, static_cast<unsigned char>(255));
    properties.add(2, static_cast<unsigned short>(65535));
    properties.add(3, 4000000000u);
    properties.add(4, std::uint64_t{0x8000000000000001});
    properties.add(5, static_cast<signed char>(-128));
    properties.add(6, static_cast<short>(-32768));
    properties.add(7, -2147483647);
    properties.add(8, std::int64_t{-2});
    properties.add(9, true);
    properties.add(10, 0.1);
    properties.add(11, std::wstring(L"t\u00E4\u4E2D\U0001F600"));
    properties.add(12, AcGePoint3d(1, 2, 3));
    properties.add(13, AcGeVector3d(4, 5, 6));
    properties.add(14, id);
    ASSERT_EQ(saved.save(tree, properties), Acad::eOk);
    saved.read([&](ValueHolder* holder) {
        ASSERT_NE(holder, nullptr);
        EXPECT_TRUE(sameInFile(holder->tree, tree));
        EXPECT_TRUE(sameInFile(holder->properties, properties));
        EXPECT_EQ(holder->properties.getCasted<std::wstring>(11), L"t\u00E4\u4E2D\U0001F600");
        EXPECT_EQ(holder->properties.getCasted<AcDbObjectId>(14).handle(), id.handle());
        EXPECT_EQ(holder->properties.getCasted<AcDbObjectId>(14).database(), holder->database());
    });
}

TEST(ValuesInDrawing, AValueThatCannotBeFiledStopsTheSave) {
    ReportRecorder recorder;
    SavedHolder saved;
    AcadObjectProperties properties;
    properties.add(1, std::string("narrow"));
    EXPECT_NE(saved.save(PropertyTree(), properties), Acad::eOk);
    EXPECT_FALSE(platform::fileExists(saved.file()));
    EXPECT_FALSE(recorder.messages().empty());
}

RC_GTEST_PROP(ValuesInDrawingProperty, AnyTreeAndAnySetComeBackFromTheFile, ()) {
    SavedHolder saved;
    const PropertyTree tree = anyTree(saved.ids(), 3);
    const AcadObjectProperties properties = anyProperties(saved.ids());
    RC_ASSERT(saved.save(tree, properties) == Acad::eOk);
    bool same = false;
    saved.read([&](ValueHolder* holder) {
        same =
            holder != nullptr && sameInFile(holder->tree, tree) && sameInFile(holder->properties, properties);
    });
    RC_ASSERT(same);
}
