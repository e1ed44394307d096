#include "AcString.h"
#include "acutmem.h"
#include "bits.h"
#include "db/database_core.h"
#include "dwg/dwg_in_filer.h"
#include "dwg/dwg_out_filer.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace embedded;
using namespace embedded::dwg;

namespace {

class FilerTest : public testing::Test {
protected:
    // A filer on what has been written so far.
    DwgInFiler reader(std::uint64_t own = 0x50) {
        return DwgInFiler(core(), m_text, BitReader(m_out.data().bytes(), 0, m_out.data().length()),
                          BitReader(m_out.handles().bytes(), 0, m_out.handles().length()), own);
    }

    DatabaseCore& core() { return m_database.core(); }

    AcDbDatabase m_database{false};
    TextCodec m_text{30};
    DwgOutFiler m_out{m_database.core().tag(), m_text};
};

// The data bits that one write gives.
std::string dataBits(const DwgOutFiler& filer) { return bitsOf(filer.data()); }

} // namespace

TEST_F(FilerTest, NumbersTakeTheFormatsCompressedCodes) {
    const struct {
        std::function<void(AcDbDwgFiler&)> write;
        const char* bits;
    } rows[] = {
        {[](AcDbDwgFiler& f) { f.writeInt8(-1); }, "11111111"},
        {[](AcDbDwgFiler& f) { f.writeUInt8(5); }, "00000101"},
        {[](AcDbDwgFiler& f) { f.writeInt16(-1); }, "00 11111111 11111111"},
        {[](AcDbDwgFiler& f) { f.writeUInt16(256); }, "11"},
        {[](AcDbDwgFiler& f) { f.writeInt32(0); }, "10"},
        {[](AcDbDwgFiler& f) { f.writeUInt32(7); }, "01 00000111"},
        {[](AcDbDwgFiler& f) { f.writeInt64(7); }, "01 00000111 10"},
        {[](AcDbDwgFiler& f) { f.writeUInt64(std::uint64_t{7} << 32); }, "10 01 00000111"},
        {[](AcDbDwgFiler& f) { f.writeBoolean(true); }, "1"},
        {[](AcDbDwgFiler& f) { f.writeBool(false); }, "0"},
        {[](AcDbDwgFiler& f) { f.writeDouble(1.0); }, "01"},
        {[](AcDbDwgFiler& f) { f.writePoint2d(AcGePoint2d(0.0, 1.0)); }, "10 01"},
        {[](AcDbDwgFiler& f) { f.writePoint3d(AcGePoint3d(1.0, 0.0, 1.0)); }, "01 10 01"},
        {[](AcDbDwgFiler& f) { f.writeVector2d(AcGeVector2d(1.0, 1.0)); }, "01 01"},
        {[](AcDbDwgFiler& f) { f.writeVector3d(AcGeVector3d(0.0, 0.0, 1.0)); }, "10 10 01"},
        {[](AcDbDwgFiler& f) { f.writeScale3d(AcGeScale3d(1.0, 1.0, 1.0)); }, "01 01 01"},
        {[](AcDbDwgFiler& f) { f.writeString(L"A"); }, "01 00000010 01000001 00000000"},
        {[](AcDbDwgFiler& f) { f.writeString(L""); }, "10"},
        {[](AcDbDwgFiler& f) { f.writeBytes("\x81", 1); }, "10000001"},
        {[](AcDbDwgFiler& f) { f.writeAcDbHandle(AcDbHandle(0x1F)); }, "0000 0001 00011111"},
    };
    for (const auto& row : rows) {
        DwgOutFiler filer(core().tag(), m_text);
        row.write(filer);
        EXPECT_EQ(dataBits(filer), withoutBlanks(row.bits)) << row.bits;
        EXPECT_EQ(filer.filerStatus(), Acad::eOk);
    }
}

TEST_F(FilerTest, IdsGoToTheHandlesWithTheirStrength) {
    const AcDbObjectId id = core().idOf(0x1F);
    m_out.writeSoftOwnershipId(id);
    m_out.writeHardOwnershipId(id);
    m_out.writeSoftPointerId(id);
    m_out.writeHardPointerId(id);
    m_out.writeHardPointerId(AcDbObjectId());
    EXPECT_EQ(m_out.data().length(), 0u);
    EXPECT_EQ(m_out.handles().bytes(), bytesOfHex("21 1F 31 1F 41 1F 51 1F 50"));
    DwgInFiler in = reader();
    AcDbSoftOwnershipId softOwner;
    AcDbHardOwnershipId hardOwner;
    AcDbSoftPointerId softPointer;
    AcDbHardPointerId hardPointer, null(id);
    in.readSoftOwnershipId(&softOwner);
    in.readHardOwnershipId(&hardOwner);
    in.readSoftPointerId(&softPointer);
    in.readHardPointerId(&hardPointer);
    in.readHardPointerId(&null);
    EXPECT_EQ(softOwner, id);
    EXPECT_EQ(hardOwner, id);
    EXPECT_EQ(softPointer, id);
    EXPECT_EQ(hardPointer, id);
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(in.filerStatus(), Acad::eOk);
}

TEST_F(FilerTest, IdsOfAnotherDatabaseAreWrittenAsNull) {
    AcDbDatabase other(false);
    m_out.writeHardPointerId(other.core().idOf(0x1F));
    EXPECT_EQ(m_out.handles().bytes(), bytesOfHex("50"));
}

TEST_F(FilerTest, RelativeHandlesAreResolvedFromTheObjectsOwn) {
    BitWriter handles;
    for (const HandleReference& reference :
         {HandleReference(kNextHandle, 0), HandleReference(kPreviousHandle, 0),
          HandleReference(kPlusOffset, 0x10), HandleReference(kMinusOffset, 0x10)})
        handles.handle(reference);
    DwgInFiler in(core(), m_text, BitReader(ByteSpan()), BitReader(handles.bytes()), 0x50);
    for (std::uint64_t expected : {0x51, 0x4F, 0x60, 0x40}) {
        AcDbSoftPointerId id;
        EXPECT_EQ(in.readSoftPointerId(&id), Acad::eOk);
        EXPECT_EQ(static_cast<Adesk::UInt64>(id.handle()), expected);
    }
}

TEST_F(FilerTest, EveryValueComesBack) {
    m_out.writeInt8(-7);
    m_out.writeUInt8(200);
    m_out.writeInt16(-300);
    m_out.writeUInt16(60000);
    m_out.writeInt32(-70000);
    m_out.writeUInt32(4000000000u);
    m_out.writeInt64(-5000000000);
    m_out.writeUInt64(0xFEDCBA9876543210u);
    m_out.writeBoolean(true);
    m_out.writeBool(true);
    m_out.writeDouble(0.1);
    m_out.writePoint2d(AcGePoint2d(1, 2));
    m_out.writePoint3d(AcGePoint3d(3, 4, 5));
    m_out.writeVector2d(AcGeVector2d(6, 7));
    m_out.writeVector3d(AcGeVector3d(8, 9, 10));
    m_out.writeScale3d(AcGeScale3d(11, 12, 13));
    m_out.writeString(AcString(L"\u20AC and \u0421"));
    m_out.writeBytes("abc", 3);
    int here = 0;
    m_out.writeAddress(&here);
    m_out.writeAcDbHandle(AcDbHandle(0x12345));
    char chunkBytes[] = "chunk";
    const ads_binary chunk{5, chunkBytes};
    m_out.writeBChunk(chunk);

    DwgInFiler in = reader();
    Adesk::Int8 i8;
    Adesk::UInt8 u8;
    Adesk::Int16 i16;
    Adesk::UInt16 u16;
    Adesk::Int32 i32;
    Adesk::UInt32 u32;
    Adesk::Int64 i64;
    Adesk::UInt64 u64;
    in.readInt8(&i8), in.readUInt8(&u8), in.readInt16(&i16), in.readUInt16(&u16);
    in.readInt32(&i32), in.readUInt32(&u32), in.readInt64(&i64), in.readUInt64(&u64);
    EXPECT_EQ(i8, -7);
    EXPECT_EQ(u8, 200);
    EXPECT_EQ(i16, -300);
    EXPECT_EQ(u16, 60000);
    EXPECT_EQ(i32, -70000);
    EXPECT_EQ(u32, 4000000000u);
    EXPECT_EQ(i64, -5000000000);
    EXPECT_EQ(u64, 0xFEDCBA9876543210u);
    Adesk::Boolean boolean = false;
    bool flag = false;
    double real = 0;
    in.readBoolean(&boolean), in.readBool(&flag), in.readDouble(&real);
    EXPECT_TRUE(boolean && flag);
    EXPECT_EQ(real, 0.1);
    AcGePoint2d p2;
    AcGePoint3d p3;
    AcGeVector2d v2;
    AcGeVector3d v3;
    AcGeScale3d s3;
    in.readPoint2d(&p2), in.readPoint3d(&p3), in.readVector2d(&v2), in.readVector3d(&v3), in.readScale3d(&s3);
    EXPECT_EQ(p2.y, 2.0);
    EXPECT_EQ(p3.z, 5.0);
    EXPECT_EQ(v2.y, 7.0);
    EXPECT_EQ(v3.z, 10.0);
    EXPECT_EQ(s3.sz, 13.0);
    ACHAR* text = nullptr;
    in.readString(&text);
    EXPECT_STREQ(text, L"\u20AC and \u0421");
    acutDelString(text);
    char bytes[3];
    in.readBytes(bytes, 3);
    EXPECT_EQ(std::memcmp(bytes, "abc", 3), 0);
    void* address = nullptr;
    in.readAddress(&address);
    EXPECT_EQ(address, &here);
    AcDbHandle handle;
    in.readAcDbHandle(&handle);
    EXPECT_EQ(static_cast<Adesk::UInt64>(handle), 0x12345u);
    ads_binary readChunk;
    in.readBChunk(&readChunk);
    ASSERT_EQ(readChunk.clen, 5);
    EXPECT_EQ(std::memcmp(readChunk.buf, "chunk", 5), 0);
    acutDelBuffer(readChunk.buf);
    EXPECT_EQ(in.filerStatus(), Acad::eOk);
    EXPECT_EQ(in.dataBitsLeft(), 0u);
}

TEST_F(FilerTest, ReadingPastTheEndFailsAndGivesZero) {
    m_out.writeUInt8(1);
    DwgInFiler in = reader();
    double value = 5;
    EXPECT_EQ(in.readDouble(&value), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(value, 0.0);
    unsigned char bytes[4] = {1, 1, 1, 1};
    EXPECT_EQ(in.readBytes(bytes, 4), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(bytes[3], 0);
    AcString text(L"left");
    in.readString(text);
    EXPECT_TRUE(text.isEmpty());
    AcDbHardPointerId id(core().idOf(1));
    in.readHardPointerId(&id);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(in.filerStatus(), Acad::eDwgObjectImproperlyRead);
}

TEST_F(FilerTest, ALengthBeyondTheDataTakesNoMemory) {
    m_out.writeUInt32(0x7FFF);
    DwgInFiler in = reader();
    ads_binary chunk;
    EXPECT_EQ(in.readBChunk(&chunk), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(chunk.clen, 0);
    EXPECT_EQ(chunk.buf, nullptr);
}

TEST_F(FilerTest, AStatusThatIsSetStopsTheStreamUntilItIsReset) {
    m_out.writeUInt8(7);
    m_out.writeUInt8(8);
    DwgInFiler in = reader();
    Adesk::UInt8 value = 0;
    in.setFilerStatus(Acad::eMakeMeProxy);
    EXPECT_EQ(in.readUInt8(&value), Acad::eMakeMeProxy);
    EXPECT_EQ(value, 0);
    in.resetFilerStatus();
    EXPECT_EQ(in.readUInt8(&value), Acad::eOk);
    EXPECT_EQ(value, 7);
}

TEST_F(FilerTest, AfterAFailureAndAResetTheStreamGoesOn) {
    m_out.writeUInt8(7);
    DwgInFiler in = reader();
    double real;
    in.readDouble(&real);
    in.resetFilerStatus();
    in.seek(0, AcDb::kSeekFromStart);
    Adesk::UInt8 value = 0;
    EXPECT_EQ(in.readUInt8(&value), Acad::eOk);
    EXPECT_EQ(value, 7);
}

TEST_F(FilerTest, PlacesCountBitsOfTheData) {
    m_out.writeBool(true);
    EXPECT_EQ(m_out.tell(), 1);
    m_out.writeUInt8(0xAA);
    EXPECT_EQ(m_out.seek(1, AcDb::kSeekFromStart), Acad::eOk);
    m_out.writeUInt8(0x55);
    EXPECT_EQ(m_out.seek(0, AcDb::kSeekFromEnd), Acad::eOk);
    EXPECT_EQ(m_out.tell(), 9);
    EXPECT_NE(m_out.seek(1, AcDb::kSeekFromEnd), Acad::eOk);
    DwgInFiler in = reader();
    EXPECT_EQ(in.seek(-8, AcDb::kSeekFromEnd), Acad::eOk);
    EXPECT_EQ(in.tell(), 1);
    Adesk::UInt8 value = 0;
    in.readUInt8(&value);
    EXPECT_EQ(value, 0x55);
    EXPECT_EQ(in.seek(-8, AcDb::kSeekFromCurrent), Acad::eOk);
    EXPECT_NE(in.seek(1000, AcDb::kSeekFromStart), Acad::eOk);
}

TEST_F(FilerTest, WritingToAReaderAndReadingFromAWriterFail) {
    DwgInFiler in = reader();
    EXPECT_NE(in.writeUInt32(1), Acad::eOk);
    EXPECT_NE(in.filerStatus(), Acad::eOk);
    Adesk::UInt32 value = 9;
    EXPECT_NE(m_out.readUInt32(&value), Acad::eOk);
    EXPECT_EQ(value, 9u);
}

TEST_F(FilerTest, BothAreTheFileFilersOfTheirVersion) {
    DwgInFiler in = reader();
    EXPECT_EQ(in.filerType(), AcDb::kFileFiler);
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown;
    AcDb::MaintenanceReleaseVersion maintenance = AcDb::kMReleaseCurrent;
    EXPECT_EQ(m_out.dwgVersion(version, maintenance), Acad::eOk);
    EXPECT_EQ(version, AcDb::kDHL_1015);
    EXPECT_EQ(fieldFiler(&in), static_cast<FieldFiler*>(&in));
}

TEST_F(FilerTest, TheFormatsOwnFieldsComeBack) {
    FieldFiler& out = m_out;
    out.writeBits(5, 3);
    out.writeRawShort(0x1234);
    out.writeRawLong(0x12345678);
    out.writeRawDouble(1.0);
    out.writeDoubleWithDefault(2.5, 2.5);
    out.writeColour(256);
    out.writeId(kHardOwner, core().idOf(9));
    DwgInFiler filer = reader();
    FieldFiler& in = filer;
    EXPECT_EQ(in.readBits(3), 5u);
    EXPECT_EQ(in.readRawShort(), 0x1234);
    EXPECT_EQ(in.readRawLong(), 0x12345678u);
    EXPECT_EQ(in.readRawDouble(), 1.0);
    EXPECT_EQ(in.readDoubleWithDefault(2.5), 2.5);
    EXPECT_EQ(in.readColour(), 256);
    std::uint8_t code = 0;
    EXPECT_EQ(in.readId(code), core().idOf(9));
    EXPECT_EQ(code, kHardOwner);
    EXPECT_EQ(in.handleBitsLeft(), 0u);
    EXPECT_EQ(in.readRawLong(), 0u);
    EXPECT_EQ(filer.filerStatus(), Acad::eDwgObjectImproperlyRead);
}
