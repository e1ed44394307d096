#pragma once

#include "dwg/class_table.h"
#include "dwg/object_types.h"
#include "dwg/text_codec.h"

#include <map>
#include <string>

class AcRxClass;

namespace embedded::dwg {

// What a type number of a drawing stands for.
struct ObjectKind {
    std::uint16_t type = 0;
    bool isEntity = false;
    // Of the class table, rather than fixed by the format.
    bool fromClassTable = false;
    // The format's name of a fixed type, else the row's DXF name.
    std::wstring dxfName;
    std::wstring className;
    std::wstring application;
    int proxyFlags = 0;
    // Makes the objects. Null while no class that can is registered.
    AcRxClass* maker = nullptr;
    // The class that an object shows instead: the host's own name for a kind that it has no code for, or a
    // proxy's.
    AcRxClass* standIn = nullptr;
    bool standInIsProxy = false;
};

// The kinds of one drawing by type number. A kind follows the registration of classes.
class ObjectKinds {
public:
    ObjectKinds(const ClassTable& classes, const TextCodec& text) : m_classes(classes), m_text(text) {}

    // Null for a number that neither the format nor the class table knows.
    const ObjectKind* find(std::uint16_t type);

private:
    struct Entry {
        ObjectKind kind;
        bool known = false;
        unsigned generation = 0;
    };

    bool describe(std::uint16_t type, ObjectKind& kind) const;

    const ClassTable& m_classes;
    const TextCodec& m_text;
    std::map<std::uint16_t, Entry> m_entries;
};

// Registers a class without a maker for each kind whose number the format fixes, where the host has no code
// for it.
void registerFixedKinds();

} // namespace embedded::dwg
