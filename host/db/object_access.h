#pragma once

#include "dbdict.h"
#include "dbmain.h"
#include "dbproxy.h"

#include <cstdint>
#include <string>
#include <vector>

namespace embedded {

// Extended data of one application as it stands in the file: the bytes behind the application's handle.
struct ExtendedData {
    AcDbObjectId application;
    std::vector<std::uint8_t> bytes;
};

// The parts of an object that few objects have.
struct ObjectExtras {
    std::vector<AcDbObjectId> reactors;
    AcDbObjectId extensionDictionary;
    std::vector<ExtendedData> extendedData;
    // The preview graphics of an entity in the file; kept as bytes.
    std::vector<std::uint8_t> graphics;
    bool hasGraphics = false;
    // Not filed, and not copied.
    std::vector<AcDbObjectReactor*> transientReactors;
};

// The bytes of an object that the host does not understand: what lies between the common data and the end of
// the data bits, and the handles behind the common ones, both as bits, first bit highest.
class ObjectBody {
public:
    std::uint16_t fileType = 0; // of the object in its file: a fixed type or a class row's number
    std::vector<std::uint8_t> data;
    std::uint32_t dataBits = 0;
    std::vector<std::uint8_t> handles;
    std::uint32_t handleBits = 0;
    // Of the class row; empty for a fixed type.
    int proxyFlags = 0;
    std::wstring className;
    std::wstring dxfName;
    std::wstring application;
};

enum ObjectBits : std::uint32_t {
    // The owner, a dictionary, is to hear of changes: filed as the first reactor. Kept as a bit, since nearly
    // every
    // record has it and nothing else.
    kOwnerIsReactor = 1,
    kUndoDisabled = 2,
    // An entity has asked to be drawn anew.
    kGraphicsModified = 4
};

// What the host's own rooms may touch of an object and its public operations do not show.
struct ObjectAccess {
    static void setId(AcDbObject& object, AcDbObjectId id) { object.mId = id; }
    static void setOwner(AcDbObject& object, AcDbObjectId owner) { object.mOwner = owner; }
    static std::uint32_t& bits(AcDbObject& object) { return object.mBits; }
    static std::uint32_t bits(const AcDbObject& object) { return object.mBits; }
    static std::uint32_t& undoScope(AcDbObject& object) { return object.mUndoScope; }

    static ObjectExtras* extras(const AcDbObject& object) { return object.mExtras; }
    static ObjectExtras& makeExtras(AcDbObject& object) {
        if (object.mExtras == nullptr)
            object.mExtras = new ObjectExtras;
        return *object.mExtras;
    }
    // All persistent reactors as they are filed, the owner's bit turned into an id, and back.
    static std::vector<AcDbObjectId> reactors(const AcDbObject& object);
    static void setReactors(AcDbObject& object, std::vector<AcDbObjectId> reactors);

    static Acad::ErrorStatus subOpen(AcDbObject& object, AcDb::OpenMode mode) { return object.subOpen(mode); }
    static Acad::ErrorStatus subClose(AcDbObject& object) { return object.subClose(); }
    static Acad::ErrorStatus subErase(AcDbObject& object, bool erasing) { return object.subErase(erasing); }

    // The settings of an entity as the drawing file holds them.
    struct EntitySettings {
        AcDbObjectId layer, linetype, plotStyle;
        double linetypeScale = 1.0;
        std::uint16_t colour = 256;
        std::uint16_t invisible = 0;
        std::uint8_t lineWeightCode = 29;
        std::uint8_t linetypeBits = 0;
        std::uint8_t plotStyleBits = 0;
    };
    static EntitySettings settings(const AcDbEntity& entity) {
        return {entity.mLayer,          entity.mLinetype,     entity.mPlotStyle,
                entity.mLinetypeScale,  entity.mColour,       entity.mInvisible,
                entity.mLineWeightCode, entity.mLinetypeBits, entity.mPlotStyleBits};
    }
    static void setSettings(AcDbEntity& entity, const EntitySettings& s) {
        entity.mLayer = s.layer;
        entity.mLinetype = s.linetype;
        entity.mPlotStyle = s.plotStyle;
        entity.mLinetypeScale = s.linetypeScale;
        entity.mColour = s.colour;
        entity.mInvisible = s.invisible;
        entity.mLineWeightCode = s.lineWeightCode;
        entity.mLinetypeBits = s.linetypeBits;
        entity.mPlotStyleBits = s.plotStyleBits;
    }

    // The bytes of a proxy or of an opaque object; null for an object that is understood.
    static const ObjectBody* body(const AcDbObject& object);
    static void setBody(AcDbObject& object, std::unique_ptr<ObjectBody> body);

    static NameTable& names(AcDbDictionary& dictionary) { return *dictionary.m_names; }
};

} // namespace embedded
