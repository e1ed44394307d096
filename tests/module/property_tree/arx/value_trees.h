#pragma once

#include "property_tree/property_tree.h"

#include "dbid.h"
#include "embedded/memory_filer.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "module/dbx/elem/value_recording_filer.h"
#include "property_tree/arx/property_tree_filer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace testing_support {

using Bytes = std::vector<std::uint8_t>;

template <class T>
bool holdSame(const boost::any& a, const boost::any& b) {
    return a.type() == typeid(T) && boost::any_cast<const T&>(a) == boost::any_cast<const T&>(b);
}

inline bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }
inline bool sameBits(const AcGePoint3d& a, const AcGePoint3d& b) {
    return sameBits(a.x, b.x) && sameBits(a.y, b.y) && sameBits(a.z, b.z);
}
inline bool sameBits(const AcGeVector3d& a, const AcGeVector3d& b) {
    return sameBits(a.x, b.x) && sameBits(a.y, b.y) && sameBits(a.z, b.z);
}
inline bool sameBits(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
    return std::memcmp(a.entry, b.entry, sizeof a.entry) == 0;
}
template <class T>
bool holdSameBits(const boost::any& a, const boost::any& b) {
    return a.type() == typeid(T) && sameBits(boost::any_cast<const T&>(a), boost::any_cast<const T&>(b));
}

// The same type and, down to the last bit, the same value.
inline bool identical(const boost::any& a, const boost::any& b) {
    if (a.type() != b.type())
        return false;
    return a.empty() || holdSame<bool>(a, b) || holdSame<int>(a, b) || holdSame<std::string>(a, b) ||
           holdSame<unsigned char>(a, b) || holdSame<signed char>(a, b) || holdSame<unsigned short>(a, b) ||
           holdSame<short>(a, b) || holdSame<unsigned int>(a, b) || holdSame<std::uint64_t>(a, b) ||
           holdSame<std::int64_t>(a, b) || holdSame<std::wstring>(a, b) || holdSame<AcDbObjectId>(a, b) ||
           holdSame<AcDbSoftPointerId>(a, b) || holdSameBits<double>(a, b) ||
           holdSameBits<AcGePoint3d>(a, b) || holdSameBits<AcGeVector3d>(a, b) ||
           holdSameBits<AcGeMatrix3d>(a, b);
}

// The same children in the same order, with identical values.
inline bool identical(const orv::PropertyTree& a, const orv::PropertyTree& b) {
    if (a.size() != b.size() || !identical(a.data(), b.data()))
        return false;
    for (auto one = a.begin(), other = b.begin(); one != a.end(); ++one, ++other)
        if (one->first != other->first || !identical(one->second, other->second))
            return false;
    return true;
}

inline orv::PropertyTree& addNode(orv::PropertyTree& parent, const std::string& key,
                                  const boost::any& value = boost::any()) {
    orv::PropertyTree& child = parent.push_back({key, orv::PropertyTree()})->second;
    child.data() = value;
    return child;
}

inline AcGeMatrix3d numberedMatrix() {
    AcGeMatrix3d matrix;
    for (unsigned int i = 0; i < 16; ++i)
        matrix(i / 4, i % 4) = i + 1;
    return matrix;
}

// Any number, those that are none among them.
inline double anyDouble() {
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}
inline AcGePoint3d anyPoint() {
    const double x = anyDouble();
    const double y = anyDouble();
    return {x, y, anyDouble()};
}

inline boost::any anyTreeValue(const std::vector<AcDbObjectId>& ids) {
    switch (*rc::gen::inRange(0, 10)) {
    case 0:
        return boost::any();
    case 1:
        return *rc::gen::arbitrary<bool>();
    case 2:
        return *rc::gen::arbitrary<int>();
    case 3:
        return anyDouble();
    case 4:
        return *rc::gen::arbitrary<std::string>();
    case 5:
        return AcDbObjectId(*rc::gen::elementOf(ids));
    case 6:
        return AcDbSoftPointerId(*rc::gen::elementOf(ids));
    case 7:
        return anyPoint();
    case 8:
        return anyPoint().asVector();
    default: {
        AcGeMatrix3d matrix;
        for (auto& row : matrix.entry)
            for (double& number : row)
                number = anyDouble();
        return matrix;
    }
    }
}

// A name that is one node when it is read.
inline std::string anyPlainKey() {
    std::string key = *rc::gen::arbitrary<std::string>();
    for (char& letter : key)
        if (letter == '.')
            letter = ':';
    return key;
}

inline void growTree(orv::PropertyTree& node, const std::vector<AcDbObjectId>& ids, int depth) {
    const int children = *rc::gen::inRange(0, depth == 0 ? 1 : 4);
    for (int i = 0; i < children; ++i) {
        const std::string key = i > 0 && *rc::gen::inRange(0, 4) == 0 ? node.begin()->first : anyPlainKey();
        growTree(addNode(node, key, anyTreeValue(ids)), ids, depth - 1);
    }
}

inline orv::PropertyTree anyTree(const std::vector<AcDbObjectId>& ids, int depth = 4) {
    orv::PropertyTree tree;
    growTree(tree, ids, depth);
    return tree;
}

inline std::vector<AcDbObjectId> someIds() { return {AcDbObjectId(), idOf(0x2a), idOf(0x1234567890)}; }

inline Bytes treeBytes(const orv::PropertyTree& tree) {
    Bytes bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    RC_ASSERT(orv::property_tree::dwgOut(filer, tree) == Acad::eOk);
    return bytes;
}

} // namespace testing_support
