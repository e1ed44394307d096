#include "dwg/root_variables.h"

#include "dwg/file_error.h"
#include "dwg/object_envelope.h"

#include <algorithm>

namespace embedded::dwg {
namespace {

struct Root {
    const char* variable;
    AcDbObjectId RootIds::*id;
    // The type that the object must have for the drawing to be usable; 0 where it may be missing.
    std::uint16_t requiredType;
};

const Root kRoots[] = {
    {"BLOCK_CONTROL", &RootIds::blockTable, 0x30},
    {"LAYER_CONTROL", &RootIds::layerTable, 0x32},
    {"STYLE_CONTROL", &RootIds::textStyleTable, 0x34},
    {"LTYPE_CONTROL", &RootIds::linetypeTable, 0x38},
    {"VIEW_CONTROL", &RootIds::viewTable, 0x3C},
    {"UCS_CONTROL", &RootIds::ucsTable, 0x3E},
    {"VPORT_CONTROL", &RootIds::viewportTable, 0x40},
    {"APPID_CONTROL", &RootIds::regAppTable, 0x42},
    {"DIMSTYLE_CONTROL", &RootIds::dimStyleTable, 0x44},
    {"VX_CONTROL", &RootIds::viewportEntityTable, 0},
    {"DICTIONARY_NAMED_OBJECTS", &RootIds::namedObjects, 0x2A},
    {"DICTIONARY_GROUP", &RootIds::groups, 0},
    {"DICTIONARY_MLINESTYLE", &RootIds::mlineStyles, 0},
    {"DICTIONARY_LAYOUTS", &RootIds::layouts, 0},
    {"DICTIONARY_PLOTSETTINGS", &RootIds::plotSettings, 0},
    {"DICTIONARY_PLOTSTYLES", &RootIds::plotStyles, 0},
    {"BLOCK_RECORD_MODEL_SPACE", &RootIds::modelSpace, 0x31},
    {"BLOCK_RECORD_PAPER_SPACE", &RootIds::paperSpace, 0x31},
    {"LTYPE_BYLAYER", &RootIds::byLayerLinetype, 0x39},
    {"LTYPE_BYBLOCK", &RootIds::byBlockLinetype, 0x39},
    {"LTYPE_CONTINUOUS", &RootIds::continuousLinetype, 0x39},
    {"CLAYER", &RootIds::currentLayer, 0x33},
};

// The current settings of a new drawing: the variables name what stands under the fixed names.
const Root kSettings[] = {
    {"TEXTSTYLE", &RootIds::textStyleStandard, 0}, {"DIMTXSTY", &RootIds::textStyleStandard, 0},
    {"DIMSTYLE", &RootIds::dimStyleStandard, 0},   {"CMLSTYLE", &RootIds::mlineStyleStandard, 0},
    {"CELTYPE", &RootIds::byLayerLinetype, 0},
};

struct NamedRoot {
    std::uint16_t type;
    const char* name;
    AcDbObjectId RootIds::*id;
};

// Kinds whose own data begin with their name.
const NamedRoot kNamedRoots[] = {
    {0x33, "0", &RootIds::layerZero},
    {0x35, "STANDARD", &RootIds::textStyleStandard},
    {0x45, "STANDARD", &RootIds::dimStyleStandard},
    {0x49, "STANDARD", &RootIds::mlineStyleStandard},
};

const ObjectSlot* slotOf(const DrawingParts& parts, std::uint64_t handle) {
    const auto found =
        std::lower_bound(parts.objects.begin(), parts.objects.end(), handle,
                         [](const ObjectSlot& slot, std::uint64_t value) { return slot.handle < value; });
    return found != parts.objects.end() && found->handle == handle ? &*found : nullptr;
}

std::string nameIn(const ObjectSlot& slot) {
    ObjectParts parts;
    std::string why;
    if (!readEnvelope(slot.body, false, parts, why))
        return {};
    std::string name = BitReader(slot.body, parts.dataBegin, parts.dataEnd).text();
    for (char& c : name)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return name;
}

void readNamedRoots(DatabaseCore& core, const DrawingParts& parts) {
    for (const ObjectSlot& slot : parts.objects) {
        const std::uint16_t type = typeOf(slot.body);
        for (const NamedRoot& root : kNamedRoots) {
            if (root.type == type && (core.roots.*root.id).isNull() && nameIn(slot) == root.name)
                core.roots.*root.id = core.idOf(slot.handle);
        }
    }
}

// The same numbers go back bit for bit, whatever they are.
void readCoordinateSystem(UserCoordinateSystem& ucs, const HeaderVariables& variables) {
    const Triple& origin = variables.triple("UCSORG");
    const Triple& xAxis = variables.triple("UCSXDIR");
    const Triple& yAxis = variables.triple("UCSYDIR");
    ucs.origin.set(origin.x, origin.y, origin.z);
    ucs.xAxis.set(xAxis.x, xAxis.y, xAxis.z);
    ucs.yAxis.set(yAxis.x, yAxis.y, yAxis.z);
}

void writeCoordinateSystem(const UserCoordinateSystem& ucs, HeaderVariables& variables) {
    variables.setTriple("UCSORG", {ucs.origin.x, ucs.origin.y, ucs.origin.z});
    variables.setTriple("UCSXDIR", {ucs.xAxis.x, ucs.xAxis.y, ucs.xAxis.z});
    variables.setTriple("UCSYDIR", {ucs.yAxis.x, ucs.yAxis.y, ucs.yAxis.z});
    if (ucs.unnamed) {
        variables.setHandle("UCSNAME", 0);
        variables.setNumber("UCSORTHOVIEW", 0);
    }
}

} // namespace

void requireRoots(const FileFrame& frame) {
    for (const Root& root : kRoots) {
        const ObjectSlot* slot = slotOf(frame.parts, frame.variables.handle(root.variable));
        if (root.requiredType != 0 && (slot == nullptr || typeOf(slot->body) != root.requiredType))
            throwDamaged(std::string("the header's ") + root.variable + " names no object of its kind");
    }
}

void readRoots(DatabaseCore& core, const FileFrame& frame) {
    for (const Root& root : kRoots)
        core.roots.*root.id = core.idOf(frame.variables.handle(root.variable));
    readNamedRoots(core, frame.parts);
    readCoordinateSystem(core.ucs, frame.variables);
}

void writeRoots(const DatabaseCore& core, FileFrame& frame) {
    const auto put = [&](const Root& root) {
        const AcDbStub* stub = core.roots.*root.id;
        frame.variables.setHandle(root.variable, stub != nullptr ? stub->handle : 0);
    };
    for (const Root& root : kRoots)
        put(root);
    if (frame.parts.file == nullptr) {
        for (const Root& setting : kSettings)
            put(setting);
    }
    frame.variables.setHandle("HANDSEED", core.handseed);
    writeCoordinateSystem(core.ucs, frame.variables);
}

RootHandles rootHandles(const HeaderVariables& variables) {
    static const char* const kOrder[SecondHeader::kHandles] = {
        "HANDSEED",
        "BLOCK_CONTROL",
        "LAYER_CONTROL",
        "STYLE_CONTROL",
        "LTYPE_CONTROL",
        "VIEW_CONTROL",
        "UCS_CONTROL",
        "VPORT_CONTROL",
        "APPID_CONTROL",
        "DIMSTYLE_CONTROL",
        "VX_CONTROL",
        "DICTIONARY_NAMED_OBJECTS",
        "DICTIONARY_MLINESTYLE",
        "DICTIONARY_GROUP",
    };
    RootHandles roots;
    for (std::size_t i = 0; i < roots.handles.size(); ++i)
        roots.handles[i] = variables.handle(kOrder[i]);
    return roots;
}

} // namespace embedded::dwg
