#pragma once

#include "dbfiler.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace embedded {

// Files values in their raw widths, little end first, one behind the other: integers and doubles as they are,
// Boolean as 1 byte, text as a 32-bit count of 16-bit units and the units, a chunk as a 32-bit length and the
// bytes, an id as the 8 bytes of what it points at. For undo and copies inside the process.
class MemoryFiler : public AcDbDwgFiler {
public:
    // Writes to the end of `bytes`, which must outlive the filer.
    MemoryFiler(AcDb::FilerType type, std::vector<std::uint8_t>& bytes);
    // Reads `length` bytes, which must outlive the filer. A read past the end fails with eEndOfObject.
    MemoryFiler(AcDb::FilerType type, const std::uint8_t* bytes, std::size_t length);

    Acad::ErrorStatus filerStatus() const override { return m_status; }
    AcDb::FilerType filerType() const override { return m_type; }
    void setFilerStatus(Acad::ErrorStatus es) override { m_status = es; }
    void resetFilerStatus() override { m_status = Acad::eOk; }

    Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override { return readId(*id); }
    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override { return writeId(id); }
    Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override { return readId(*id); }
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override { return writeId(id); }
    Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override { return readId(*id); }
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override { return writeId(id); }
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override { return readId(*id); }
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override { return writeId(id); }

    Acad::ErrorStatus readInt8(Adesk::Int8* value) override { return get(*value); }
    Acad::ErrorStatus writeInt8(Adesk::Int8 value) override { return put(value); }
    Acad::ErrorStatus readString(ACHAR** text) override;
    Acad::ErrorStatus writeString(const ACHAR* text) override;
    Acad::ErrorStatus readString(AcString& text) override;
    Acad::ErrorStatus writeString(const AcString& text) override;
    Acad::ErrorStatus readBChunk(ads_binary* chunk) override;
    Acad::ErrorStatus writeBChunk(const ads_binary& chunk) override;
    Acad::ErrorStatus readAcDbHandle(AcDbHandle* handle) override;
    Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& handle) override;
    Acad::ErrorStatus readInt64(Adesk::Int64* value) override { return get(*value); }
    Acad::ErrorStatus writeInt64(Adesk::Int64 value) override { return put(value); }
    Acad::ErrorStatus readInt32(Adesk::Int32* value) override { return get(*value); }
    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override { return put(value); }
    Acad::ErrorStatus readInt16(Adesk::Int16* value) override { return get(*value); }
    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override { return put(value); }
    Acad::ErrorStatus readUInt8(Adesk::UInt8* value) override { return get(*value); }
    Acad::ErrorStatus writeUInt8(Adesk::UInt8 value) override { return put(value); }
    Acad::ErrorStatus readUInt16(Adesk::UInt16* value) override { return get(*value); }
    Acad::ErrorStatus writeUInt16(Adesk::UInt16 value) override { return put(value); }
    Acad::ErrorStatus readUInt32(Adesk::UInt32* value) override { return get(*value); }
    Acad::ErrorStatus writeUInt32(Adesk::UInt32 value) override { return put(value); }
    Acad::ErrorStatus readUInt64(Adesk::UInt64* value) override { return get(*value); }
    Acad::ErrorStatus writeUInt64(Adesk::UInt64 value) override { return put(value); }
    Acad::ErrorStatus readBoolean(Adesk::Boolean* value) override;
    Acad::ErrorStatus writeBoolean(Adesk::Boolean value) override;
    Acad::ErrorStatus readBool(bool* value) override;
    Acad::ErrorStatus writeBool(bool value) override;
    Acad::ErrorStatus readDouble(double* value) override { return get(*value); }
    Acad::ErrorStatus writeDouble(double value) override { return put(value); }
    Acad::ErrorStatus readPoint2d(AcGePoint2d* value) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d* value) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override;
    Acad::ErrorStatus readVector2d(AcGeVector2d* value) override;
    Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d* value) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override;
    Acad::ErrorStatus readScale3d(AcGeScale3d* value) override;
    Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) override;
    Acad::ErrorStatus readBytes(void* bytes, Adesk::UIntPtr length) override;
    Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UIntPtr length) override;
    Acad::ErrorStatus readAddress(void** address) override;
    Acad::ErrorStatus writeAddress(const void* address) override;

    Acad::ErrorStatus seek(Adesk::Int64 offset, int method) override;
    Adesk::Int64 tell() const override;

    // Bytes that are left to read.
    std::size_t left() const { return m_length - m_position; }

private:
    template <class T>
    Acad::ErrorStatus get(T& value) {
        return readBytes(&value, sizeof(T));
    }
    template <class T>
    Acad::ErrorStatus put(T value) {
        return writeBytes(&value, sizeof(T));
    }
    Acad::ErrorStatus readId(AcDbObjectId& id);
    Acad::ErrorStatus writeId(const AcDbObjectId& id);
    Acad::ErrorStatus readDoubles(double* values, int count);
    // The length of a run that follows, or failure if it doesn't lie within what is left.
    Acad::ErrorStatus readLength(std::uint32_t& count, std::size_t unit);

    AcDb::FilerType m_type;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::vector<std::uint8_t>* m_out = nullptr;
    const std::uint8_t* m_in = nullptr;
    std::size_t m_length = 0;
    std::size_t m_position = 0;
};

} // namespace embedded
