#include "property_tree/arx/property_tree_filer.h"

#include "module/property_tree/arx/value_trees.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

using namespace orv::property_tree;
using namespace testing_support;
using orv::PropertyTree;

namespace {

Acad::ErrorStatus readFrom(const Bytes& bytes, PropertyTree& tree) {
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    return dwgIn(filer, tree);
}

void append(Bytes& bytes, std::uint32_t number) {
    for (int i = 0; i < 4; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

// A chain of so many nodes below the root, as bytes.
Bytes chainBytes(std::size_t depth) {
    Bytes bytes;
    append(bytes, 1);
    for (std::size_t i = 0; i < depth; ++i) {
        bytes.push_back('C');
        append(bytes, 1);
        bytes.insert(bytes.end(), {'n', 'N'});
    }
    bytes.insert(bytes.end(), depth + 1, 'E');
    append(bytes, 0xcafeefac);
    return bytes;
}

// One node whose name makes a chain of so many.
Bytes dottedBytes(std::size_t parts) {
    Bytes bytes;
    append(bytes, 1);
    bytes.push_back('C');
    append(bytes, static_cast<std::uint32_t>(parts - 1));
    bytes.insert(bytes.end(), parts - 1, '.');
    bytes.insert(bytes.end(), {'N', 'E', 'E'});
    append(bytes, 0xcafeefac);
    return bytes;
}

std::size_t depthOf(const PropertyTree& tree) {
    std::size_t depth = 0;
    for (const PropertyTree* node = &tree; !node->empty(); node = &node->begin()->second)
        ++depth;
    return depth;
}

} // namespace

TEST(PropertyTreeDepth, TheDeepestTreeReadsBack) {
    PropertyTree tree;
    const Bytes bytes = chainBytes(kMaxDepth);
    EXPECT_EQ(readFrom(bytes, tree), Acad::eOk);
    EXPECT_EQ(depthOf(tree), kMaxDepth);
    EXPECT_EQ(treeBytes(tree), bytes);
}

TEST(PropertyTreeDepth, ADeeperStreamIsRefusedHoweverDeepItIs) {
    for (std::size_t depth : {kMaxDepth + 1, std::size_t{1000000}}) {
        PropertyTree tree;
        EXPECT_EQ(readFrom(chainBytes(depth), tree), Acad::eInvalidKey);
        EXPECT_EQ(depthOf(tree), kMaxDepth);
    }
}

TEST(PropertyTreeDepth, TheFullStopsOfANameCount) {
    PropertyTree tree;
    EXPECT_EQ(readFrom(dottedBytes(kMaxDepth), tree), Acad::eOk);
    EXPECT_EQ(depthOf(tree), kMaxDepth);
    for (std::size_t parts : {kMaxDepth + 1, std::size_t{1000000}}) {
        PropertyTree refused;
        EXPECT_EQ(readFrom(dottedBytes(parts), refused), Acad::eInvalidKey);
        EXPECT_TRUE(refused.empty());
    }
}

TEST(PropertyTreeDepth, ATreeThatCouldNotBeReadIsNotWritten) {
    ReportRecorder recorder;
    PropertyTree tree;
    PropertyTree* node = &tree;
    for (std::size_t i = 0; i < kMaxDepth; ++i)
        node = &addNode(*node, "n");
    Bytes bytes;
    embedded::MemoryFiler whole(AcDb::kCopyFiler, bytes);
    EXPECT_EQ(dwgOut(whole, tree), Acad::eOk);
    EXPECT_EQ(recorder.size(), 0u);
    addNode(*node, "n");
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    EXPECT_EQ(dwgOut(filer, tree), Acad::eInvalidKey);
    ASSERT_EQ(recorder.conditions(), (Texts{"childDepth <= kMaxDepth"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"childDepth", "1001"}}));
    EXPECT_EQ(recorder.messages(), (Texts{"the tree is too deep"}));
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kError);
}

TEST(PropertyTreeBytes, ATreeOfOneValueInRawWidths) {
    PropertyTree tree;
    addNode(tree, "k", 5);
    EXPECT_EQ(treeBytes(tree),
              (Bytes{1, 0, 0, 0, 'C', 1, 0, 0, 0, 'k', 'i', 5, 0, 0, 0, 'E', 'E', 0xac, 0xef, 0xfe, 0xca}));
    EXPECT_EQ(treeBytes(PropertyTree()).size(), 9u);
}

TEST(PropertyTreeDamage, ALengthBeyondTheStreamTakesNoMoreMemoryThanTheStreamCouldFill) {
    // 4 GiB for a name, and for a text.
    Bytes name;
    append(name, 1);
    name.push_back('C');
    append(name, 0xffffffff);
    name.insert(name.end(), {'x', 'y'});
    PropertyTree tree;
    EXPECT_EQ(readFrom(name, tree), Acad::eEndOfObject);
    EXPECT_TRUE(tree.empty());
    Bytes text = {'s'};
    append(text, 0xfffffff0);
    text.push_back('x');
    embedded::MemoryFiler filer(AcDb::kCopyFiler, text.data(), text.size());
    boost::any value = 4711;
    EXPECT_EQ(dwgInValue(filer, value), Acad::eEndOfObject);
    EXPECT_TRUE(identical(value, boost::any(4711)));
}

TEST(PropertyTreeDamage, ALongTextComesBackWhole) {
    std::string text(1000003, 'x');
    for (std::size_t i = 0; i < text.size(); i += 4099)
        text[i] = static_cast<char>(i >> 12);
    PropertyTree tree;
    addNode(tree, text, text);
    for (char& letter : text)
        if (letter == '.')
            letter = ':';
    PropertyTree plain;
    addNode(plain, text, text);
    PropertyTree back;
    ASSERT_EQ(readFrom(treeBytes(plain), back), Acad::eOk);
    EXPECT_TRUE(identical(back, plain));
}

RC_GTEST_PROP(PropertyTreeProperty, AnyTreeOfPlainNamesReadsBackAsItWas, ()) {
    const PropertyTree tree = anyTree(someIds());
    const Bytes bytes = treeBytes(tree);
    PropertyTree back;
    addNode(back, "before");
    RC_ASSERT(readFrom(bytes, back) == Acad::eOk);
    RC_ASSERT(identical(back, tree));
    RC_ASSERT(treeBytes(back) == bytes);
}

RC_GTEST_PROP(PropertyTreeProperty, AnyCutEndsInAFailure, ()) {
    Bytes bytes = treeBytes(anyTree(someIds()));
    bytes.resize(*rc::gen::inRange<std::size_t>(0, bytes.size()));
    PropertyTree back;
    RC_ASSERT(readFrom(bytes, back) == Acad::eEndOfObject);
}

RC_GTEST_PROP(PropertyTreeProperty, AnyBytesEndInATreeOrAFailure, ()) {
    ReportRecorder recorder;
    Bytes bytes = *rc::gen::container<Bytes>(rc::gen::oneOf(
        rc::gen::arbitrary<std::uint8_t>(),
        rc::gen::cast<std::uint8_t>(rc::gen::elementOf(std::string("CCCCEENNbidsoxpvm..\0\0\0\0\1\2", 25)))));
    bytes.insert(bytes.begin(), {1, 0, 0, 0});
    PropertyTree back;
    const Acad::ErrorStatus es = readFrom(bytes, back);
    RC_ASSERT(es == Acad::eOk || es == Acad::eEndOfObject || es == Acad::eInvalidKey ||
              es == Acad::eKeyNotFound);
    RC_ASSERT(back.data().empty());
}

RC_GTEST_PROP(PropertyTreeProperty, ASingleDamagedBitEndsInATreeOrAFailure, ()) {
    ReportRecorder recorder;
    const Bytes bytes = treeBytes(anyTree(someIds(), 2));
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        Bytes damaged = bytes;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        recorder.clear();
        PropertyTree back;
        const Acad::ErrorStatus es = readFrom(damaged, back);
        RC_ASSERT(es == Acad::eOk || es == Acad::eEndOfObject || es == Acad::eInvalidKey ||
                  es == Acad::eKeyNotFound);
        const bool inVersion = bit < 32;
        if (inVersion)
            RC_ASSERT(es == Acad::eOk && recorder.conditions() == Texts{"version == 1"});
    }
}
