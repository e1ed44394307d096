#include "property_tree/arx/property_tree_filer.h"

#include "base/assert.h"
#include "property_tree/arx/filed_text.h"

#include "dbfiler.h"

#include <algorithm>

namespace orv::property_tree {

namespace {

constexpr Adesk::Int32 kVersion = 1;
constexpr Adesk::UInt32 kMagic = 0xcafeefac;
constexpr Adesk::Int8 kChild = 'C';
constexpr Adesk::Int8 kEnd = 'E';
constexpr char kSeparator = '.';

// How many nodes a name is when it is read.
std::size_t partsOf(const std::string& key) {
    return 1 + static_cast<std::size_t>(std::count(key.begin(), key.end(), kSeparator));
}

// A new node under a path. Of the nodes on the way, the first one of a name is taken, or made if there is
// none; the last one is always new. An empty name is a node as well.
PropertyTree& addChild(PropertyTree& parent, const std::string& path) {
    PropertyTree* node = &parent;
    std::size_t start = 0;
    for (std::size_t stop = path.find(kSeparator); stop != std::string::npos;
         stop = path.find(kSeparator, start)) {
        const std::string name = path.substr(start, stop - start);
        const auto found = node->find(name);
        node = found != node->not_found() ? &found->second : &node->push_back({name, PropertyTree()})->second;
        start = stop + 1;
    }
    return node->push_back({path.substr(start), PropertyTree()})->second;
}

Acad::ErrorStatus dwgOutNode(AcDbDwgFiler& filer, const PropertyTree& node, std::size_t depth) {
    for (const auto& [key, child] : node) {
        const std::size_t childDepth = depth + partsOf(key);
        ORV_ASSERT(childDepth <= kMaxDepth)(childDepth).error("the tree is too deep");
        if (childDepth > kMaxDepth)
            return Acad::eInvalidKey;
        Acad::ErrorStatus es = filer.writeInt8(kChild);
        if (es == Acad::eOk)
            es = writeText(filer, key);
        if (es == Acad::eOk)
            es = dwgOutValue(filer, child.data());
        if (es == Acad::eOk)
            es = dwgOutNode(filer, child, childDepth);
        if (es != Acad::eOk)
            return es;
    }
    return filer.writeInt8(kEnd);
}

Acad::ErrorStatus dwgInNode(AcDbDwgFiler& filer, PropertyTree& node, std::size_t depth) {
    Adesk::Int8 marker = 0;
    Acad::ErrorStatus es = filer.readInt8(&marker);
    while (es == Acad::eOk && marker == kChild) {
        std::string key;
        es = readText(filer, key);
        if (es != Acad::eOk)
            return es;
        const std::size_t childDepth = depth + partsOf(key);
        if (childDepth > kMaxDepth)
            return Acad::eInvalidKey;
        PropertyTree& child = addChild(node, key);
        es = dwgInValue(filer, child.data());
        if (es == Acad::eOk)
            es = dwgInNode(filer, child, childDepth);
        if (es == Acad::eOk)
            es = filer.readInt8(&marker);
    }
    if (es != Acad::eOk)
        return es;
    return marker == kEnd ? Acad::eOk : Acad::eInvalidKey;
}

} // namespace

Acad::ErrorStatus dwgOut(AcDbDwgFiler& filer, const PropertyTree& t) {
    Acad::ErrorStatus es = filer.writeInt32(kVersion);
    if (es != Acad::eOk)
        return es;
    ORV_ASSERT(t.data().empty()).error("Root node MUST NOT contain any DATA.");
    if (!t.data().empty())
        return Acad::eInvalidInput;
    es = dwgOutNode(filer, t, 0);
    if (es != Acad::eOk)
        return es;
    return filer.writeInt32(static_cast<Adesk::Int32>(kMagic));
}

Acad::ErrorStatus dwgIn(AcDbDwgFiler& filer, PropertyTree& t) {
    Adesk::Int32 version = 0;
    Acad::ErrorStatus es = filer.readInt32(&version);
    if (es != Acad::eOk)
        return es;
    ORV_ASSERT(version == 1)(version);
    t = PropertyTree();
    es = dwgInNode(filer, t, 0);
    if (es != Acad::eOk)
        return es;
    Adesk::Int32 filedMagic = 0;
    es = filer.readInt32(&filedMagic);
    if (es != Acad::eOk)
        return es;
    const auto magic = static_cast<Adesk::UInt32>(filedMagic);
    ORV_ASSERT(magic == 0xcafeefac)(magic);
    return Acad::eOk;
}

} // namespace orv::property_tree
