#include "dwg/dwg_in_filer.h"

#include "AcString.h"
#include "acutmem.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace embedded::dwg {

Acad::ErrorStatus DwgInFiler::settle() {
    if (!m_data.ok() || !m_handles.ok())
        fail(Acad::eDwgObjectImproperlyRead);
    return m_status;
}

void DwgInFiler::resetFilerStatus() {
    m_data.clear();
    m_handles.clear();
    ReadingFiler::resetFilerStatus();
}

// What `read` gives, or zero where the stream has failed.
template <class Read>
auto DwgInFiler::get(Read read) {
    decltype(read()) value{};
    if (usable())
        value = read();
    if (settle() != Acad::eOk)
        value = {};
    return value;
}

template <class T, class Read>
Acad::ErrorStatus DwgInFiler::into(T* value, Read read) {
    *value = static_cast<T>(get(read));
    return m_status;
}

AcDbObjectId DwgInFiler::readId(std::uint8_t& code) {
    const HandleReference reference = get([this] { return m_handles.handle(); });
    code = reference.code;
    return usable() ? m_database.idOf(reference.absolute(m_own)) : AcDbObjectId();
}

Acad::ErrorStatus DwgInFiler::readIdInto(AcDbObjectId& id) {
    std::uint8_t code;
    id = readId(code);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readHardOwnershipId(AcDbHardOwnershipId* id) { return readIdInto(*id); }
Acad::ErrorStatus DwgInFiler::readHardPointerId(AcDbHardPointerId* id) { return readIdInto(*id); }
Acad::ErrorStatus DwgInFiler::readSoftOwnershipId(AcDbSoftOwnershipId* id) { return readIdInto(*id); }
Acad::ErrorStatus DwgInFiler::readSoftPointerId(AcDbSoftPointerId* id) { return readIdInto(*id); }

Acad::ErrorStatus DwgInFiler::readInt8(Adesk::Int8* value) {
    return into(value, [this] { return m_data.rawChar(); });
}

Acad::ErrorStatus DwgInFiler::readUInt8(Adesk::UInt8* value) {
    return into(value, [this] { return m_data.rawChar(); });
}

Acad::ErrorStatus DwgInFiler::readInt16(Adesk::Int16* value) {
    return into(value, [this] { return m_data.bitShort(); });
}

Acad::ErrorStatus DwgInFiler::readUInt16(Adesk::UInt16* value) {
    return into(value, [this] { return m_data.bitShort(); });
}

Acad::ErrorStatus DwgInFiler::readInt32(Adesk::Int32* value) {
    return into(value, [this] { return m_data.bitLong(); });
}

Acad::ErrorStatus DwgInFiler::readUInt32(Adesk::UInt32* value) {
    return into(value, [this] { return m_data.bitLong(); });
}

Acad::ErrorStatus DwgInFiler::readUInt64(Adesk::UInt64* value) {
    return into(value, [this] {
        const std::uint64_t low = m_data.bitLong();
        return low | static_cast<std::uint64_t>(m_data.bitLong()) << 32;
    });
}

Acad::ErrorStatus DwgInFiler::readInt64(Adesk::Int64* value) {
    Adesk::UInt64 bits = 0;
    readUInt64(&bits);
    *value = static_cast<Adesk::Int64>(bits);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readBoolean(Adesk::Boolean* value) {
    return into(value, [this] { return m_data.bit(); });
}

Acad::ErrorStatus DwgInFiler::readBool(bool* value) {
    return into(value, [this] { return m_data.bit(); });
}

Acad::ErrorStatus DwgInFiler::readDouble(double* value) {
    return into(value, [this] { return m_data.bitDouble(); });
}

Acad::ErrorStatus DwgInFiler::readDoubles(double* values, int count) {
    for (int i = 0; i < count; ++i)
        readDouble(&values[i]);
    // A point that could not be read whole is zero as a whole.
    if (m_status != Acad::eOk)
        std::fill(values, values + count, 0.0);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readPoint2d(AcGePoint2d* value) {
    double d[2];
    readDoubles(d, 2);
    *value = AcGePoint2d(d[0], d[1]);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readVector2d(AcGeVector2d* value) {
    double d[2];
    readDoubles(d, 2);
    *value = AcGeVector2d(d[0], d[1]);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readPoint3d(AcGePoint3d* value) {
    double d[3];
    readDoubles(d, 3);
    *value = AcGePoint3d(d[0], d[1], d[2]);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readVector3d(AcGeVector3d* value) {
    double d[3];
    readDoubles(d, 3);
    *value = AcGeVector3d(d[0], d[1], d[2]);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readScale3d(AcGeScale3d* value) {
    double d[3];
    readDoubles(d, 3);
    *value = AcGeScale3d(d[0], d[1], d[2]);
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readString(AcString& text) {
    text = decoded(get([this] { return m_data.text(); }));
    return m_status;
}

// A text ends at its first zero.
AcString DwgInFiler::decoded(const std::string& bytes) const {
    const std::wstring text = m_text.decode(bytes);
    return AcString(text.c_str(), std::char_traits<wchar_t>::length(text.c_str()));
}

void DwgInFiler::readSpelledText(AcString& text, std::string& form) {
    form = get([this] { return m_data.text(); });
    text = decoded(form);
    form.erase(std::min(form.find('\0'), form.size()));
    if (m_text.encode(text.kACharPtr()) == form)
        form.clear();
}

Acad::ErrorStatus DwgInFiler::readString(ACHAR** text) {
    AcString value;
    readString(value);
    *text = acutNewString(value.kACharPtr());
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readBytes(void* bytes, Adesk::UIntPtr length) {
    const bool done = usable() && m_data.rawBytes(static_cast<std::uint8_t*>(bytes), length);
    if (!done && length != 0)
        std::memset(bytes, 0, length);
    return settle();
}

Acad::ErrorStatus DwgInFiler::readBChunk(ads_binary* chunk) {
    chunk->clen = 0;
    chunk->buf = nullptr;
    const std::uint32_t length = get([this] { return m_data.bitLong(); });
    if (length > static_cast<std::uint32_t>(std::numeric_limits<short>::max()) || length > m_data.left() / 8)
        return fail(Acad::eDwgObjectImproperlyRead);
    if (length == 0)
        return m_status;
    chunk->buf = static_cast<char*>(acutNewBuffer(length));
    chunk->clen = static_cast<short>(length);
    return readBytes(chunk->buf, length);
}

Acad::ErrorStatus DwgInFiler::readAcDbHandle(AcDbHandle* handle) {
    *handle = AcDbHandle(static_cast<Adesk::UInt64>(get([this] { return m_data.handle().value; })));
    return m_status;
}

Acad::ErrorStatus DwgInFiler::readAddress(void** address) {
    const std::uint64_t bits = get([this] {
        const std::uint64_t low = m_data.rawLong();
        return low | static_cast<std::uint64_t>(m_data.rawLong()) << 32;
    });
    *address = reinterpret_cast<void*>(static_cast<Adesk::UIntPtr>(bits));
    return m_status;
}

Acad::ErrorStatus DwgInFiler::seek(Adesk::Int64 offset, int method) {
    if (!usable())
        return m_status;
    const std::size_t from = method == AcDb::kSeekFromStart     ? m_begin
                             : method == AcDb::kSeekFromCurrent ? m_data.position()
                                                                : m_data.end();
    // A wild offset wraps to a place outside the bits, and is refused there.
    const std::size_t place = from + static_cast<std::size_t>(offset);
    if (place < m_begin || place > m_data.end())
        return fail(Acad::eInvalidInput);
    m_data.seek(place);
    return m_status;
}

Adesk::Int64 DwgInFiler::tell() const { return static_cast<Adesk::Int64>(m_data.position() - m_begin); }

std::uint32_t DwgInFiler::readBits(unsigned count) {
    return get([this, count] { return m_data.take(count); });
}

std::uint16_t DwgInFiler::readRawShort() {
    return get([this] { return m_data.rawShort(); });
}

std::uint32_t DwgInFiler::readRawLong() {
    return get([this] { return m_data.rawLong(); });
}

double DwgInFiler::readRawDouble() {
    return get([this] { return m_data.rawDouble(); });
}

double DwgInFiler::readDoubleWithDefault(double defaultValue) {
    return get([this, defaultValue] { return m_data.bitDouble(defaultValue); });
}

std::uint16_t DwgInFiler::readColour() {
    return get([this] { return m_data.bitShort(); });
}

} // namespace embedded::dwg
