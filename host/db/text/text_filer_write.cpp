#include "AcString.h"
#include "db/text/group.h"
#include "db/text/group_values.h"
#include "embedded/text_filer.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <algorithm>

namespace embedded {

using namespace text;

// False, with a failure that stands, if nothing can be written under the code.
bool TextFiler::begin(AcDb::DxfCode code, Group& group) {
    if (!m_writer)
        setError(Acad::eIsReading, L"the stream is read");
    group.code = code;
    group.type = groupTypeOf(code);
    if (group.type == GroupType::kNone)
        setError(Acad::eInvalidDxfCode, L"no group code: %d", static_cast<int>(code));
    return m_status == Acad::eOk;
}

// One group; `set` puts the value into it.
template <class Set>
Acad::ErrorStatus TextFiler::put(AcDb::DxfCode code, int digits, Set set) {
    Group group;
    if (!begin(code, group))
        return m_status;
    switch (set(group)) {
    case Fit::kWrongKind:
        return setError(Acad::eInvalidDxfCode, L"group code %d does not hold such a value", group.code);
    case Fit::kOutOfRange:
        return setError(Acad::eOutOfRange, L"the value is out of range for group code %d", group.code);
    case Fit::kOk:
        m_writer->put(group, digitsOf(digits));
    }
    return m_status;
}

Acad::ErrorStatus TextFiler::writeInteger(AcDb::DxfCode code, Adesk::Int64 value, bool isUnsigned) {
    return put(code, kDfltPrec, [&](Group& group) { return setInteger(group, value, isUnsigned); });
}

Acad::ErrorStatus TextFiler::writeInt8(AcDb::DxfCode code, Adesk::Int8 value) {
    return writeInteger(code, value, false);
}
Acad::ErrorStatus TextFiler::writeInt16(AcDb::DxfCode code, Adesk::Int16 value) {
    return writeInteger(code, value, false);
}
Acad::ErrorStatus TextFiler::writeInt32(AcDb::DxfCode code, Adesk::Int32 value) {
    return writeInteger(code, value, false);
}
Acad::ErrorStatus TextFiler::writeInt64(AcDb::DxfCode code, Adesk::Int64 value) {
    return writeInteger(code, value, false);
}
Acad::ErrorStatus TextFiler::writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) {
    return writeInteger(code, value, true);
}
Acad::ErrorStatus TextFiler::writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) {
    return writeInteger(code, value, true);
}
Acad::ErrorStatus TextFiler::writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) {
    return writeInteger(code, value, true);
}
Acad::ErrorStatus TextFiler::writeUInt64(AcDb::DxfCode code, Adesk::UInt64 value) {
    return put(code, kDfltPrec, [&](Group& group) { return setUnsigned64(group, value); });
}
Acad::ErrorStatus TextFiler::writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) {
    return writeInteger(code, value ? 1 : 0, false);
}
Acad::ErrorStatus TextFiler::writeBool(AcDb::DxfCode code, bool value) {
    return writeInteger(code, value ? 1 : 0, false);
}

Acad::ErrorStatus TextFiler::writeDouble(AcDb::DxfCode code, double value, int digits) {
    return put(code, digits, [&](Group& group) { return setReal(group, value, digitsOf(digits)); });
}

Acad::ErrorStatus TextFiler::writeString(AcDb::DxfCode code, const ACHAR* text) {
    return put(code, kDfltPrec, [&](Group& group) { return setText(group, text != nullptr ? text : L""); });
}

Acad::ErrorStatus TextFiler::writeString(AcDb::DxfCode code, const AcString& text) {
    return writeString(code, text.kACharPtr());
}

Acad::ErrorStatus TextFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& handle) {
    return put(code, kDfltPrec, [&](Group& group) { return setHandle(group, handle); });
}

Acad::ErrorStatus TextFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
    return writeAcDbHandle(code, id.handle());
}

Acad::ErrorStatus TextFiler::writeBChunk(AcDb::DxfCode code, const ads_binary& chunk) {
    if (chunk.clen < 0 || (chunk.clen > 0 && chunk.buf == nullptr))
        return setError(Acad::eInvalidInput, L"binary data without bytes");
    const auto length = static_cast<std::size_t>(chunk.clen);
    std::size_t done = 0;
    do {
        const std::size_t part = std::min(length - done, kWrittenChunk);
        put(code, kDfltPrec, [&](Group& group) {
            if (group.type != GroupType::kChunk)
                return Fit::kWrongKind;
            if (part != 0)
                group.bytes.assign(chunk.buf + done, part);
            return Fit::kOk;
        });
        done += part;
    } while (done < length && m_status == Acad::eOk);
    return m_status;
}

Acad::ErrorStatus TextFiler::writeCoordinates(AcDb::DxfCode code, const double* values, int count,
                                              int digits) {
    if (!beginsPoint(code))
        return setError(Acad::eInvalidDxfCode, L"group code %d begins no point", static_cast<int>(code));
    for (int i = 0; i < count; ++i)
        writeDouble(static_cast<AcDb::DxfCode>(code + i * kNextCoordinate), values[i], digits);
    return m_status;
}

Acad::ErrorStatus TextFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value, int digits) {
    const double values[] = {value.x, value.y};
    return writeCoordinates(code, values, 2, digits);
}
Acad::ErrorStatus TextFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value, int digits) {
    const double values[] = {value.x, value.y, value.z};
    return writeCoordinates(code, values, 3, digits);
}
Acad::ErrorStatus TextFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value, int digits) {
    const double values[] = {value.x, value.y};
    return writeCoordinates(code, values, 2, digits);
}
Acad::ErrorStatus TextFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value, int digits) {
    const double values[] = {value.x, value.y, value.z};
    return writeCoordinates(code, values, 3, digits);
}
Acad::ErrorStatus TextFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value, int digits) {
    const double values[] = {value.sx, value.sy, value.sz};
    return writeCoordinates(code, values, 3, digits);
}

Acad::ErrorStatus TextFiler::writeIdResBuf(AcDb::DxfCode code, const resbuf& value) {
    AcDbObjectId id;
    id.setFromOldId(value.resval.rlname[0]);
    return writeObjectId(code, id);
}

Acad::ErrorStatus TextFiler::writeResBuf(const resbuf& value) {
    const auto code = static_cast<AcDb::DxfCode>(value.restype);
    if (beginsPoint(code))
        return writeCoordinates(code, value.resval.rpoint, 3, kDfltPrec);
    switch (groupTypeOf(code)) {
    case GroupType::kReal:
        return writeDouble(code, value.resval.rreal);
    case GroupType::kInt16:
    case GroupType::kSwitch:
        return writeInt16(code, value.resval.rint);
    case GroupType::kInt32:
        return writeInt32(code, value.resval.rlong);
    case GroupType::kInt64:
        return writeInt64(code, value.resval.mnInt64);
    case GroupType::kObjectId:
        return writeIdResBuf(code, value);
    case GroupType::kChunk:
        return writeBChunk(code, value.resval.rbinary);
    default:
        return writeString(code, value.resval.rstring);
    }
}

// Only lists in memory have a mark before the extended data.
void TextFiler::writeXDataStart() {}

} // namespace embedded
