#include "dwg/dwg_out_filer.h"

#include "AcString.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <cwchar>

namespace embedded::dwg {
namespace {

// With the zero that ends a text, its length has to fit into a BS.
const std::size_t kLongestText = 0xFFFF - 1;

} // namespace

Acad::ErrorStatus DwgOutFiler::writeReference(std::uint8_t code, AcDbObjectId id) {
    const AcDbStub* stub = id;
    const bool own = stub != nullptr && stub->tag == m_database;
    m_handles.handle(HandleReference(code, own ? stub->handle : 0));
    return m_status;
}

void DwgOutFiler::writeId(std::uint8_t code, AcDbObjectId id) { writeReference(code, id); }

Acad::ErrorStatus DwgOutFiler::writeHardOwnershipId(const AcDbHardOwnershipId& id) {
    return writeReference(kHardOwner, id);
}

Acad::ErrorStatus DwgOutFiler::writeHardPointerId(const AcDbHardPointerId& id) {
    return writeReference(kHardPointer, id);
}

Acad::ErrorStatus DwgOutFiler::writeSoftOwnershipId(const AcDbSoftOwnershipId& id) {
    return writeReference(kSoftOwner, id);
}

Acad::ErrorStatus DwgOutFiler::writeSoftPointerId(const AcDbSoftPointerId& id) {
    return writeReference(kSoftPointer, id);
}

Acad::ErrorStatus DwgOutFiler::writeInt8(Adesk::Int8 value) {
    return writeUInt8(static_cast<Adesk::UInt8>(value));
}

Acad::ErrorStatus DwgOutFiler::writeUInt8(Adesk::UInt8 value) {
    m_data.rawChar(value);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeInt16(Adesk::Int16 value) {
    return writeUInt16(static_cast<Adesk::UInt16>(value));
}

Acad::ErrorStatus DwgOutFiler::writeUInt16(Adesk::UInt16 value) {
    m_data.bitShort(value);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeInt32(Adesk::Int32 value) {
    return writeUInt32(static_cast<Adesk::UInt32>(value));
}

Acad::ErrorStatus DwgOutFiler::writeUInt32(Adesk::UInt32 value) {
    m_data.bitLong(value);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeInt64(Adesk::Int64 value) {
    return writeUInt64(static_cast<Adesk::UInt64>(value));
}

Acad::ErrorStatus DwgOutFiler::writeUInt64(Adesk::UInt64 value) {
    m_data.bitLong(static_cast<std::uint32_t>(value));
    m_data.bitLong(static_cast<std::uint32_t>(value >> 32));
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeBoolean(Adesk::Boolean value) { return writeBool(value); }

Acad::ErrorStatus DwgOutFiler::writeBool(bool value) {
    m_data.bit(value);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeDouble(double value) {
    m_data.bitDouble(value);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writePoint2d(const AcGePoint2d& value) {
    writeDouble(value.x);
    return writeDouble(value.y);
}

Acad::ErrorStatus DwgOutFiler::writeVector2d(const AcGeVector2d& value) {
    writeDouble(value.x);
    return writeDouble(value.y);
}

Acad::ErrorStatus DwgOutFiler::writePoint3d(const AcGePoint3d& value) {
    m_data.threeBitDoubles({value.x, value.y, value.z});
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeVector3d(const AcGeVector3d& value) {
    m_data.threeBitDoubles({value.x, value.y, value.z});
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeScale3d(const AcGeScale3d& value) {
    m_data.threeBitDoubles({value.sx, value.sy, value.sz});
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeText(std::wstring_view text) { return writeEncoded(m_text.encode(text)); }

void DwgOutFiler::writeSpelledText(const AcString& text, const std::string& form) {
    if (!form.empty() && m_text.decode(form) == text.kACharPtr())
        writeEncoded(form);
    else
        writeText(text.kACharPtr());
}

Acad::ErrorStatus DwgOutFiler::writeEncoded(std::string bytes) {
    if (bytes.size() > kLongestText)
        return fail(Acad::eStringTooLong);
    if (m_terminateTexts && !bytes.empty())
        bytes.push_back('\0');
    m_data.filedText(bytes);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeString(const ACHAR* text) {
    return writeText(text != nullptr ? text : L"");
}

Acad::ErrorStatus DwgOutFiler::writeString(const AcString& text) { return writeText(text.kACharPtr()); }

Acad::ErrorStatus DwgOutFiler::writeBytes(const void* bytes, Adesk::UIntPtr length) {
    m_data.rawBytes(static_cast<const std::uint8_t*>(bytes), length);
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeBChunk(const ads_binary& chunk) {
    const std::uint32_t length = chunk.clen > 0 ? static_cast<std::uint32_t>(chunk.clen) : 0;
    m_data.bitLong(length);
    return writeBytes(chunk.buf, length);
}

Acad::ErrorStatus DwgOutFiler::writeAcDbHandle(const AcDbHandle& handle) {
    m_data.handle(HandleReference(kPlainHandle, static_cast<Adesk::UInt64>(handle)));
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::writeAddress(const void* address) {
    const std::uint64_t bits = reinterpret_cast<Adesk::UIntPtr>(address);
    m_data.rawLong(static_cast<std::uint32_t>(bits));
    m_data.rawLong(static_cast<std::uint32_t>(bits >> 32));
    return m_status;
}

Acad::ErrorStatus DwgOutFiler::seek(Adesk::Int64 offset, int method) {
    const std::size_t from = method == AcDb::kSeekFromStart     ? 0
                             : method == AcDb::kSeekFromCurrent ? m_data.position()
                                                                : m_data.length();
    // A wild offset wraps to a place behind the bits, and is refused there.
    if (!m_data.seek(from + static_cast<std::size_t>(offset)))
        return fail(Acad::eInvalidInput);
    return m_status;
}

} // namespace embedded::dwg
