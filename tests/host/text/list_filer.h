#pragma once

#include "text_fixture.h"

namespace testing_text {

// A filer that is no file's: what an object writes to it first, and reads from it, goes to a text filer
// behind it.
class ListFiler : public AcDbDxfFiler {
public:
    explicit ListFiler(TextFiler& file) : m_file(file) {}
    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    Acad::ErrorStatus filerStatus() const override { return m_file.filerStatus(); }
    Acad::ErrorStatus readResBuf(resbuf* v) override { return m_file.readResBuf(v); }
    Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode c, const AcDbHandle& v) override {
        return m_file.writeAcDbHandle(c, v);
    }
    Acad::ErrorStatus writeObjectId(AcDb::DxfCode c, const AcDbObjectId& v) override {
        return m_file.writeObjectId(c, v);
    }
    Adesk::Boolean atEndOfObject() override { return m_file.atEndOfObject(); }

    int rewindFiler() override { return RTERROR; }
    void resetFilerStatus() override {}
    Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR*, ...) override { return es; }
    Acad::ErrorStatus setError(const ACHAR*, ...) override { return Acad::eInvalidInput; }
    const ACHAR* errorMessage() const override { return L""; }
    AcDbDatabase* database() const override { return nullptr; }
    int precision() const override { return 0; }
    void setPrecision(int) override {}
    Acad::ErrorStatus writeResBuf(const resbuf&) override { return Acad::eOk; }
    Acad::ErrorStatus writeString(AcDb::DxfCode, const ACHAR*) override { return Acad::eOk; }
    Acad::ErrorStatus writeString(AcDb::DxfCode, const AcString&) override { return Acad::eOk; }
    Acad::ErrorStatus writeBChunk(AcDb::DxfCode, const ads_binary&) override { return Acad::eOk; }
    Acad::ErrorStatus writeInt8(AcDb::DxfCode, Adesk::Int8) override { return Acad::eOk; }
    Acad::ErrorStatus writeInt16(AcDb::DxfCode, Adesk::Int16) override { return Acad::eOk; }
    Acad::ErrorStatus writeInt32(AcDb::DxfCode, Adesk::Int32) override { return Acad::eOk; }
    Acad::ErrorStatus writeInt64(AcDb::DxfCode, Adesk::Int64) override { return Acad::eOk; }
    Acad::ErrorStatus writeUInt8(AcDb::DxfCode, Adesk::UInt8) override { return Acad::eOk; }
    Acad::ErrorStatus writeUInt16(AcDb::DxfCode, Adesk::UInt16) override { return Acad::eOk; }
    Acad::ErrorStatus writeUInt32(AcDb::DxfCode, Adesk::UInt32) override { return Acad::eOk; }
    Acad::ErrorStatus writeUInt64(AcDb::DxfCode, Adesk::UInt64) override { return Acad::eOk; }
    Acad::ErrorStatus writeBoolean(AcDb::DxfCode, Adesk::Boolean) override { return Acad::eOk; }
    Acad::ErrorStatus writeBool(AcDb::DxfCode, bool) override { return Acad::eOk; }
    Acad::ErrorStatus writeDouble(AcDb::DxfCode, double, int) override { return Acad::eOk; }
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode, const AcGePoint2d&, int) override { return Acad::eOk; }
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode, const AcGePoint3d&, int) override { return Acad::eOk; }
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode, const AcGeVector2d&, int) override { return Acad::eOk; }
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode, const AcGeVector3d&, int) override { return Acad::eOk; }
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode, const AcGeScale3d&, int) override { return Acad::eOk; }
    Adesk::Boolean atEOF() override { return m_file.atEOF(); }
    Adesk::Boolean atExtendedData() override { return false; }
    Adesk::Boolean atSubclassData(const ACHAR*) override { return false; }
    Adesk::Boolean atEmbeddedObjectStart() override { return false; }
    void pushBackItem() override {}
    void writeXDataStart() override {}
    Acad::ErrorStatus writeEmbeddedObjectStart() override { return Acad::eOk; }

private:
    TextFiler& m_file;
};

} // namespace testing_text
