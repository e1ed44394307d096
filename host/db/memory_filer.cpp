#include "embedded/memory_filer.h"

#include "AcString.h"
#include "acutmem.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"
#include "platform/text.h"

#include <cstring>
#include <string>

namespace embedded {

MemoryFiler::MemoryFiler(AcDb::FilerType type, std::vector<std::uint8_t>& bytes)
    : m_type(type), m_out(&bytes) {}

MemoryFiler::MemoryFiler(AcDb::FilerType type, const std::uint8_t* bytes, std::size_t length)
    : m_type(type), m_in(bytes), m_length(length) {}

Acad::ErrorStatus MemoryFiler::readBytes(void* bytes, Adesk::UIntPtr length) {
    if (m_status == Acad::eOk && length > left())
        m_status = Acad::eEndOfObject;
    if (m_status != Acad::eOk) {
        if (length != 0)
            std::memset(bytes, 0, length);
        return m_status;
    }
    if (length != 0)
        std::memcpy(bytes, m_in + m_position, length);
    m_position += length;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryFiler::writeBytes(const void* bytes, Adesk::UIntPtr length) {
    if (m_out == nullptr)
        return m_status = Acad::eNotOpenForWrite;
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    if (length != 0)
        m_out->insert(m_out->end(), first, first + length);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::readLength(std::uint32_t& count, std::size_t unit) {
    get(count);
    if (m_status == Acad::eOk && count > left() / unit)
        m_status = Acad::eEndOfObject;
    if (m_status != Acad::eOk)
        count = 0;
    return m_status;
}

Acad::ErrorStatus MemoryFiler::readId(AcDbObjectId& id) {
    Adesk::UInt64 value = 0;
    get(value);
    id = AcDbObjectId(reinterpret_cast<AcDbStub*>(static_cast<Adesk::UIntPtr>(value)));
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeId(const AcDbObjectId& id) {
    return put(static_cast<Adesk::UInt64>(reinterpret_cast<Adesk::UIntPtr>(static_cast<AcDbStub*>(id))));
}

Acad::ErrorStatus MemoryFiler::readString(AcString& text) {
    std::uint32_t count = 0;
    readLength(count, sizeof(char16_t));
    std::u16string units(count, u'\0');
    readBytes(units.data(), count * sizeof(char16_t));
    text = platform::fromUtf16(units).c_str();
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeString(const AcString& text) { return writeString(text.kACharPtr()); }

Acad::ErrorStatus MemoryFiler::readString(ACHAR** text) {
    AcString value;
    readString(value);
    *text = acutNewString(value.kACharPtr());
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeString(const ACHAR* text) {
    const std::u16string units = platform::toUtf16(text != nullptr ? text : L"");
    put(static_cast<std::uint32_t>(units.size()));
    return writeBytes(units.data(), units.size() * sizeof(char16_t));
}

Acad::ErrorStatus MemoryFiler::readBChunk(ads_binary* chunk) {
    std::uint32_t count = 0;
    readLength(count, 1);
    if (count > 0x7FFF) {
        m_status = Acad::eEndOfObject;
        count = 0;
    }
    chunk->clen = static_cast<short>(count);
    chunk->buf = nullptr;
    if (count != 0) {
        chunk->buf = static_cast<char*>(acutNewBuffer(count));
        readBytes(chunk->buf, count);
    }
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeBChunk(const ads_binary& chunk) {
    const std::uint32_t count = chunk.clen > 0 ? static_cast<std::uint32_t>(chunk.clen) : 0;
    put(count);
    return writeBytes(chunk.buf, count);
}

Acad::ErrorStatus MemoryFiler::readAcDbHandle(AcDbHandle* handle) {
    Adesk::UInt64 value = 0;
    get(value);
    *handle = AcDbHandle(value);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeAcDbHandle(const AcDbHandle& handle) {
    return put(static_cast<Adesk::UInt64>(handle));
}

Acad::ErrorStatus MemoryFiler::readBoolean(Adesk::Boolean* value) {
    Adesk::UInt8 byte = 0;
    get(byte);
    *value = byte != 0;
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeBoolean(Adesk::Boolean value) {
    return put(static_cast<Adesk::UInt8>(value ? 1 : 0));
}

Acad::ErrorStatus MemoryFiler::readBool(bool* value) {
    Adesk::UInt8 byte = 0;
    get(byte);
    *value = byte != 0;
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeBool(bool value) { return put(static_cast<Adesk::UInt8>(value ? 1 : 0)); }

Acad::ErrorStatus MemoryFiler::readDoubles(double* values, int count) {
    for (int i = 0; i < count; ++i)
        get(values[i]);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::readPoint2d(AcGePoint2d* value) {
    double d[2];
    readDoubles(d, 2);
    value->set(d[0], d[1]);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writePoint2d(const AcGePoint2d& value) {
    put(value.x);
    return put(value.y);
}

Acad::ErrorStatus MemoryFiler::readPoint3d(AcGePoint3d* value) {
    double d[3];
    readDoubles(d, 3);
    value->set(d[0], d[1], d[2]);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writePoint3d(const AcGePoint3d& value) {
    put(value.x);
    put(value.y);
    return put(value.z);
}

Acad::ErrorStatus MemoryFiler::readVector2d(AcGeVector2d* value) {
    double d[2];
    readDoubles(d, 2);
    value->set(d[0], d[1]);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeVector2d(const AcGeVector2d& value) {
    put(value.x);
    return put(value.y);
}

Acad::ErrorStatus MemoryFiler::readVector3d(AcGeVector3d* value) {
    double d[3];
    readDoubles(d, 3);
    value->set(d[0], d[1], d[2]);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeVector3d(const AcGeVector3d& value) {
    put(value.x);
    put(value.y);
    return put(value.z);
}

Acad::ErrorStatus MemoryFiler::readScale3d(AcGeScale3d* value) {
    double d[3];
    readDoubles(d, 3);
    *value = AcGeScale3d(d[0], d[1], d[2]);
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeScale3d(const AcGeScale3d& value) {
    put(value.sx);
    put(value.sy);
    return put(value.sz);
}

Acad::ErrorStatus MemoryFiler::readAddress(void** address) {
    Adesk::UInt64 value = 0;
    get(value);
    *address = reinterpret_cast<void*>(static_cast<Adesk::UIntPtr>(value));
    return m_status;
}

Acad::ErrorStatus MemoryFiler::writeAddress(const void* address) {
    return put(static_cast<Adesk::UInt64>(reinterpret_cast<Adesk::UIntPtr>(address)));
}

Acad::ErrorStatus MemoryFiler::seek(Adesk::Int64 offset, int method) {
    if (m_in == nullptr)
        return Acad::eNotApplicable;
    const auto length = static_cast<Adesk::Int64>(m_length);
    const Adesk::Int64 base = method == AcDb::kSeekFromStart ? 0
                              : method == AcDb::kSeekFromEnd ? length
                                                             : static_cast<Adesk::Int64>(m_position);
    if (offset < -base || offset > length - base)
        return Acad::eInvalidInput;
    m_position = static_cast<std::size_t>(base + offset);
    return Acad::eOk;
}

Adesk::Int64 MemoryFiler::tell() const {
    return static_cast<Adesk::Int64>(m_out != nullptr ? m_out->size() : m_position);
}

} // namespace embedded
