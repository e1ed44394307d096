#include "dwg/object_types.h"

#include <cstddef>
#include <cwchar>

namespace embedded::dwg {
namespace {

const bool kEntity = true;
const bool kObject = false;

// Ascending. Several kinds may have one class; then the first is what a new object of the class gets.
const FixedType kTypes[] = {
    {0x01, kEntity, "TEXT", L"AcDbText"},
    {0x02, kEntity, "ATTRIB", L"AcDbAttribute"},
    {0x03, kEntity, "ATTDEF", L"AcDbAttributeDefinition"},
    {0x04, kEntity, "BLOCK", L"AcDbBlockBegin"},
    {0x05, kEntity, "ENDBLK", L"AcDbBlockEnd"},
    {0x06, kEntity, "SEQEND", L"AcDbSequenceEnd"},
    {0x07, kEntity, "INSERT", L"AcDbBlockReference"},
    {0x08, kEntity, "MINSERT", L"AcDbMInsertBlock"},
    {0x0A, kEntity, "VERTEX_2D", L"AcDb2dVertex"},
    {0x0B, kEntity, "VERTEX_3D", L"AcDb3dPolylineVertex"},
    {0x0C, kEntity, "VERTEX_MESH", L"AcDbPolygonMeshVertex"},
    {0x0D, kEntity, "VERTEX_PFACE", L"AcDbPolyFaceMeshVertex"},
    {0x0E, kEntity, "VERTEX_PFACE_FACE", L"AcDbFaceRecord"},
    {0x0F, kEntity, "POLYLINE_2D", L"AcDb2dPolyline"},
    {0x10, kEntity, "POLYLINE_3D", L"AcDb3dPolyline"},
    {0x11, kEntity, "ARC", L"AcDbArc"},
    {0x12, kEntity, "CIRCLE", L"AcDbCircle"},
    {0x13, kEntity, "LINE", L"AcDbLine"},
    {0x14, kEntity, "DIMENSION_ORDINATE", L"AcDbOrdinateDimension"},
    {0x15, kEntity, "DIMENSION_LINEAR", L"AcDbRotatedDimension"},
    {0x16, kEntity, "DIMENSION_ALIGNED", L"AcDbAlignedDimension"},
    {0x17, kEntity, "DIMENSION_ANG3PT", L"AcDb3PointAngularDimension"},
    {0x18, kEntity, "DIMENSION_ANG2LN", L"AcDb2LineAngularDimension"},
    {0x19, kEntity, "DIMENSION_RADIUS", L"AcDbRadialDimension"},
    {0x1A, kEntity, "DIMENSION_DIAMETER", L"AcDbDiametricDimension"},
    {0x1B, kEntity, "POINT", L"AcDbPoint"},
    {0x1C, kEntity, "3DFACE", L"AcDbFace"},
    {0x1D, kEntity, "POLYLINE_PFACE", L"AcDbPolyFaceMesh"},
    {0x1E, kEntity, "POLYLINE_MESH", L"AcDbPolygonMesh"},
    {0x1F, kEntity, "SOLID", L"AcDbSolid"},
    {0x20, kEntity, "TRACE", L"AcDbTrace"},
    {0x21, kEntity, "SHAPE", L"AcDbShape"},
    {0x22, kEntity, "VIEWPORT", L"AcDbViewport"},
    {0x23, kEntity, "ELLIPSE", L"AcDbEllipse"},
    {0x24, kEntity, "SPLINE", L"AcDbSpline"},
    {0x25, kEntity, "REGION", L"AcDbRegion"},
    {0x26, kEntity, "3DSOLID", L"AcDb3dSolid"},
    {0x27, kEntity, "BODY", L"AcDbBody"},
    {0x28, kEntity, "RAY", L"AcDbRay"},
    {0x29, kEntity, "XLINE", L"AcDbXline"},
    {0x2A, kObject, "DICTIONARY", L"AcDbDictionary"},
    {0x2B, kEntity, "OLEFRAME", L"AcDbOleFrame"},
    {0x2C, kEntity, "MTEXT", L"AcDbMText"},
    {0x2D, kEntity, "LEADER", L"AcDbLeader"},
    {0x2E, kEntity, "TOLERANCE", L"AcDbFcf"},
    {0x2F, kEntity, "MLINE", L"AcDbMline"},
    {0x30, kObject, "BLOCK_CONTROL", L"AcDbBlockTable"},
    {0x31, kObject, "BLOCK_HEADER", L"AcDbBlockTableRecord"},
    {0x32, kObject, "LAYER_CONTROL", L"AcDbLayerTable"},
    {0x33, kObject, "LAYER", L"AcDbLayerTableRecord"},
    {0x34, kObject, "STYLE_CONTROL", L"AcDbTextStyleTable"},
    {0x35, kObject, "STYLE", L"AcDbTextStyleTableRecord"},
    {0x38, kObject, "LTYPE_CONTROL", L"AcDbLinetypeTable"},
    {0x39, kObject, "LTYPE", L"AcDbLinetypeTableRecord"},
    {0x3C, kObject, "VIEW_CONTROL", L"AcDbViewTable"},
    {0x3D, kObject, "VIEW", L"AcDbViewTableRecord"},
    {0x3E, kObject, "UCS_CONTROL", L"AcDbUCSTable"},
    {0x3F, kObject, "UCS", L"AcDbUCSTableRecord"},
    {0x40, kObject, "VPORT_CONTROL", L"AcDbViewportTable"},
    {0x41, kObject, "VPORT", L"AcDbViewportTableRecord"},
    {0x42, kObject, "APPID_CONTROL", L"AcDbRegAppTable"},
    {0x43, kObject, "APPID", L"AcDbRegAppTableRecord"},
    {0x44, kObject, "DIMSTYLE_CONTROL", L"AcDbDimStyleTable"},
    {0x45, kObject, "DIMSTYLE", L"AcDbDimStyleTableRecord"},
    {0x46, kObject, "VX_CONTROL", L"AcDbVXTable"},
    {0x47, kObject, "VX_TABLE_RECORD", L"AcDbVXTableRecord"},
    {0x48, kObject, "GROUP", L"AcDbGroup"},
    {0x49, kObject, "MLINESTYLE", L"AcDbMlineStyle"},
    {0x4A, kEntity, "OLE2FRAME", L"AcDbOle2Frame"},
    {0x4B, kObject, "DUMMY", L"AcDbDummy"},
    {0x4C, kObject, "LONG_TRANSACTION", L"AcDbLongTransaction"},
    {0x4D, kEntity, "LWPOLYLINE", L"AcDbPolyline"},
    {0x4E, kEntity, "HATCH", L"AcDbHatch"},
    {0x4F, kObject, "XRECORD", L"AcDbXrecord"},
    {0x50, kObject, "PLACEHOLDER", L"AcDbPlaceHolder"},
    {0x51, kObject, "VBA_PROJECT", L"AcDbVbaProject"},
    {0x52, kObject, "LAYOUT", L"AcDbLayout"},
    {0x1F2, kEntity, "PROXY_ENTITY", L"AcDbProxyEntity"},
    {0x1F3, kObject, "PROXY_OBJECT", L"AcDbProxyObject"},
};

const std::size_t kTypeCount = sizeof kTypes / sizeof kTypes[0];

} // namespace

const FixedType* fixedType(std::uint16_t number) {
    for (std::size_t i = 0; i < kTypeCount && kTypes[i].number <= number; ++i) {
        if (kTypes[i].number == number)
            return &kTypes[i];
    }
    return nullptr;
}

std::uint16_t fixedNumber(const wchar_t* className) {
    for (const FixedType& type : kTypes) {
        if (std::wcscmp(type.className, className) == 0)
            return type.number;
    }
    return 0;
}

} // namespace embedded::dwg
