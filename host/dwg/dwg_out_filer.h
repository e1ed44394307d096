#pragma once

#include "db/database_core.h"
#include "db/field_filer.h"
#include "db/text_form_filer.h"
#include "dwg/bit_writer.h"
#include "dwg/one_way_filer.h"
#include "dwg/text_codec.h"

namespace embedded::dwg {

// Writes an object's fields as a drawing file's bits, data and handles apart. tell and seek count bits of the
// data.
class DwgOutFiler final : public WritingFiler, public FieldFiler, public TextFormFiler {
public:
    // Both must outlive the filer. Ids of other databases are written as null. Products differ in whether
    // they file the zero that ends a text; a drawing keeps to one way.
    DwgOutFiler(const DatabaseTag* database, const TextCodec& text, bool terminateTexts = true)
        : m_database(database), m_text(text), m_terminateTexts(terminateTexts) {}

    const BitWriter& data() const { return m_data; }
    const BitWriter& handles() const { return m_handles; }

    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override;
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override;
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override;
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override;
    Acad::ErrorStatus writeInt8(Adesk::Int8 value) override;
    // eStringTooLong for more than 65534 bytes in the drawing's code page, and nothing is written.
    Acad::ErrorStatus writeString(const ACHAR* text) override;
    Acad::ErrorStatus writeString(const AcString& text) override;
    Acad::ErrorStatus writeBChunk(const ads_binary& chunk) override;
    Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& handle) override;
    Acad::ErrorStatus writeInt64(Adesk::Int64 value) override;
    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override;
    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override;
    Acad::ErrorStatus writeUInt8(Adesk::UInt8 value) override;
    Acad::ErrorStatus writeUInt16(Adesk::UInt16 value) override;
    Acad::ErrorStatus writeUInt32(Adesk::UInt32 value) override;
    Acad::ErrorStatus writeUInt64(Adesk::UInt64 value) override;
    Acad::ErrorStatus writeBoolean(Adesk::Boolean value) override;
    Acad::ErrorStatus writeBool(bool value) override;
    Acad::ErrorStatus writeDouble(double value) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override;
    Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override;
    Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) override;
    Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UIntPtr length) override;
    Acad::ErrorStatus writeAddress(const void* address) override;
    Acad::ErrorStatus seek(Adesk::Int64 offset, int method) override;
    Adesk::Int64 tell() const override { return static_cast<Adesk::Int64>(m_data.position()); }

    void writeBits(std::uint32_t value, unsigned count) override { m_data.put(value, count); }
    void writeRawShort(std::uint16_t value) override { m_data.rawShort(value); }
    void writeRawLong(std::uint32_t value) override { m_data.rawLong(value); }
    void writeRawDouble(double value) override { m_data.rawDouble(value); }
    void writeDoubleWithDefault(double value, double defaultValue) override {
        m_data.bitDouble(value, defaultValue);
    }
    void writeColour(std::uint16_t index) override { m_data.bitShort(index); }
    void writeId(std::uint8_t code, AcDbObjectId id) override;
    std::uint32_t readBits(unsigned) override { return refuse(), 0; }
    std::uint16_t readRawShort() override { return refuse(), std::uint16_t{0}; }
    std::uint32_t readRawLong() override { return refuse(), 0; }
    double readRawDouble() override { return refuse(), 0.0; }
    double readDoubleWithDefault(double) override { return refuse(), 0.0; }
    std::uint16_t readColour() override { return refuse(), std::uint16_t{0}; }
    AcDbObjectId readId(std::uint8_t&) override { return refuse(), AcDbObjectId(); }
    void readSpelledText(AcString&, std::string&) override { refuse(); }
    void writeSpelledText(const AcString& text, const std::string& form) override;
    std::size_t dataBitsLeft() const override { return 0; }
    std::size_t handleBitsLeft() const override { return 0; }

private:
    Acad::ErrorStatus writeText(std::wstring_view text);
    Acad::ErrorStatus writeEncoded(std::string bytes);
    Acad::ErrorStatus writeReference(std::uint8_t code, AcDbObjectId id);

    const DatabaseTag* m_database;
    const TextCodec& m_text;
    bool m_terminateTexts;
    BitWriter m_data;
    BitWriter m_handles;
};

} // namespace embedded::dwg
