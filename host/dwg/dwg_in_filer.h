#pragma once

#include "db/database_core.h"
#include "db/field_filer.h"
#include "db/text_form_filer.h"
#include "dwg/bit_reader.h"
#include "dwg/one_way_filer.h"
#include "dwg/text_codec.h"

namespace embedded::dwg {

// Reads an object's fields from a drawing file's bits: numbers, points and texts from its data, ids from its
// handles. A read past the end of either, or of something the format does not have, sets
// eDwgObjectImproperlyRead and gives zero or empty. tell and seek count bits of the data.
class DwgInFiler final : public ReadingFiler, public FieldFiler, public TextFormFiler {
public:
    // The bits and the database must outlive the filer. `own` is the object's handle, from which relative
    // ones count.
    DwgInFiler(DatabaseCore& database, const TextCodec& text, BitReader data, BitReader handles,
               std::uint64_t own)
        : m_database(database), m_text(text), m_data(data), m_handles(handles), m_own(own),
          m_begin(data.position()) {}

    void resetFilerStatus() override;

    Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override;
    Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override;
    Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override;
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override;
    Acad::ErrorStatus readInt8(Adesk::Int8* value) override;
    Acad::ErrorStatus readString(ACHAR** text) override;
    Acad::ErrorStatus readString(AcString& text) override;
    Acad::ErrorStatus readBChunk(ads_binary* chunk) override;
    Acad::ErrorStatus readAcDbHandle(AcDbHandle* handle) override;
    Acad::ErrorStatus readInt64(Adesk::Int64* value) override;
    Acad::ErrorStatus readInt32(Adesk::Int32* value) override;
    Acad::ErrorStatus readInt16(Adesk::Int16* value) override;
    Acad::ErrorStatus readUInt8(Adesk::UInt8* value) override;
    Acad::ErrorStatus readUInt16(Adesk::UInt16* value) override;
    Acad::ErrorStatus readUInt32(Adesk::UInt32* value) override;
    Acad::ErrorStatus readUInt64(Adesk::UInt64* value) override;
    Acad::ErrorStatus readBoolean(Adesk::Boolean* value) override;
    Acad::ErrorStatus readBool(bool* value) override;
    Acad::ErrorStatus readDouble(double* value) override;
    Acad::ErrorStatus readPoint2d(AcGePoint2d* value) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d* value) override;
    Acad::ErrorStatus readVector2d(AcGeVector2d* value) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d* value) override;
    Acad::ErrorStatus readScale3d(AcGeScale3d* value) override;
    Acad::ErrorStatus readBytes(void* bytes, Adesk::UIntPtr length) override;
    Acad::ErrorStatus readAddress(void** address) override;
    Acad::ErrorStatus seek(Adesk::Int64 offset, int method) override;
    Adesk::Int64 tell() const override;

    std::uint32_t readBits(unsigned count) override;
    std::uint16_t readRawShort() override;
    std::uint32_t readRawLong() override;
    double readRawDouble() override;
    double readDoubleWithDefault(double defaultValue) override;
    std::uint16_t readColour() override;
    AcDbObjectId readId(std::uint8_t& code) override;
    void writeBits(std::uint32_t, unsigned) override { refuse(); }
    void writeRawShort(std::uint16_t) override { refuse(); }
    void writeRawLong(std::uint32_t) override { refuse(); }
    void writeRawDouble(double) override { refuse(); }
    void writeDoubleWithDefault(double, double) override { refuse(); }
    void writeColour(std::uint16_t) override { refuse(); }
    void writeId(std::uint8_t, AcDbObjectId) override { refuse(); }
    void readSpelledText(AcString& text, std::string& form) override;
    void writeSpelledText(const AcString&, const std::string&) override { refuse(); }
    std::size_t dataBitsLeft() const override { return m_data.left(); }
    std::size_t handleBitsLeft() const override { return m_handles.left(); }

private:
    bool usable() const { return m_status == Acad::eOk; }
    Acad::ErrorStatus settle();
    Acad::ErrorStatus readIdInto(AcDbObjectId& id);
    AcString decoded(const std::string& bytes) const;
    Acad::ErrorStatus readDoubles(double* values, int count);
    template <class Read>
    auto get(Read read);
    template <class T, class Read>
    Acad::ErrorStatus into(T* value, Read read);

    DatabaseCore& m_database;
    const TextCodec& m_text;
    BitReader m_data;
    BitReader m_handles;
    std::uint64_t m_own;
    std::size_t m_begin;
};

} // namespace embedded::dwg
