#pragma once

#include "dbfiler.h"

namespace embedded::dwg {

// The part that reading and writing filers of the drawing file share: the status.
class FileFiler : public AcDbDwgFiler {
public:
    Acad::ErrorStatus filerStatus() const override { return m_status; }
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    void setFilerStatus(Acad::ErrorStatus es) override { m_status = es; }
    void resetFilerStatus() override { m_status = Acad::eOk; }
    Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& version,
                                 AcDb::MaintenanceReleaseVersion& maintenance) const override {
        version = AcDb::kDHL_1015;
        maintenance = AcDb::kMRelease0;
        return Acad::eOk;
    }

protected:
    // The first failure stays.
    Acad::ErrorStatus fail(Acad::ErrorStatus es) {
        if (m_status == Acad::eOk)
            m_status = es;
        return m_status;
    }

    Acad::ErrorStatus m_status = Acad::eOk;
};

// A filer that only reads: every write fails.
class ReadingFiler : public FileFiler {
public:
    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId&) override { return refuse(); }
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId&) override { return refuse(); }
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId&) override { return refuse(); }
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId&) override { return refuse(); }
    Acad::ErrorStatus writeInt8(Adesk::Int8) override { return refuse(); }
    Acad::ErrorStatus writeString(const ACHAR*) override { return refuse(); }
    Acad::ErrorStatus writeString(const AcString&) override { return refuse(); }
    Acad::ErrorStatus writeBChunk(const ads_binary&) override { return refuse(); }
    Acad::ErrorStatus writeAcDbHandle(const AcDbHandle&) override { return refuse(); }
    Acad::ErrorStatus writeInt64(Adesk::Int64) override { return refuse(); }
    Acad::ErrorStatus writeInt32(Adesk::Int32) override { return refuse(); }
    Acad::ErrorStatus writeInt16(Adesk::Int16) override { return refuse(); }
    Acad::ErrorStatus writeUInt8(Adesk::UInt8) override { return refuse(); }
    Acad::ErrorStatus writeUInt16(Adesk::UInt16) override { return refuse(); }
    Acad::ErrorStatus writeUInt32(Adesk::UInt32) override { return refuse(); }
    Acad::ErrorStatus writeUInt64(Adesk::UInt64) override { return refuse(); }
    Acad::ErrorStatus writeBoolean(Adesk::Boolean) override { return refuse(); }
    Acad::ErrorStatus writeBool(bool) override { return refuse(); }
    Acad::ErrorStatus writeDouble(double) override { return refuse(); }
    Acad::ErrorStatus writePoint2d(const AcGePoint2d&) override { return refuse(); }
    Acad::ErrorStatus writePoint3d(const AcGePoint3d&) override { return refuse(); }
    Acad::ErrorStatus writeVector2d(const AcGeVector2d&) override { return refuse(); }
    Acad::ErrorStatus writeVector3d(const AcGeVector3d&) override { return refuse(); }
    Acad::ErrorStatus writeScale3d(const AcGeScale3d&) override { return refuse(); }
    Acad::ErrorStatus writeBytes(const void*, Adesk::UIntPtr) override { return refuse(); }
    Acad::ErrorStatus writeAddress(const void*) override { return refuse(); }

protected:
    Acad::ErrorStatus refuse() { return fail(Acad::eFilerError); }
};

// A filer that only writes: every read fails and leaves its target alone.
class WritingFiler : public FileFiler {
public:
    Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId*) override { return refuse(); }
    Acad::ErrorStatus readHardPointerId(AcDbHardPointerId*) override { return refuse(); }
    Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId*) override { return refuse(); }
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId*) override { return refuse(); }
    Acad::ErrorStatus readInt8(Adesk::Int8*) override { return refuse(); }
    Acad::ErrorStatus readString(ACHAR**) override { return refuse(); }
    Acad::ErrorStatus readString(AcString&) override { return refuse(); }
    Acad::ErrorStatus readBChunk(ads_binary*) override { return refuse(); }
    Acad::ErrorStatus readAcDbHandle(AcDbHandle*) override { return refuse(); }
    Acad::ErrorStatus readInt64(Adesk::Int64*) override { return refuse(); }
    Acad::ErrorStatus readInt32(Adesk::Int32*) override { return refuse(); }
    Acad::ErrorStatus readInt16(Adesk::Int16*) override { return refuse(); }
    Acad::ErrorStatus readUInt8(Adesk::UInt8*) override { return refuse(); }
    Acad::ErrorStatus readUInt16(Adesk::UInt16*) override { return refuse(); }
    Acad::ErrorStatus readUInt32(Adesk::UInt32*) override { return refuse(); }
    Acad::ErrorStatus readUInt64(Adesk::UInt64*) override { return refuse(); }
    Acad::ErrorStatus readBoolean(Adesk::Boolean*) override { return refuse(); }
    Acad::ErrorStatus readBool(bool*) override { return refuse(); }
    Acad::ErrorStatus readDouble(double*) override { return refuse(); }
    Acad::ErrorStatus readPoint2d(AcGePoint2d*) override { return refuse(); }
    Acad::ErrorStatus readPoint3d(AcGePoint3d*) override { return refuse(); }
    Acad::ErrorStatus readVector2d(AcGeVector2d*) override { return refuse(); }
    Acad::ErrorStatus readVector3d(AcGeVector3d*) override { return refuse(); }
    Acad::ErrorStatus readScale3d(AcGeScale3d*) override { return refuse(); }
    Acad::ErrorStatus readBytes(void*, Adesk::UIntPtr) override { return refuse(); }
    Acad::ErrorStatus readAddress(void**) override { return refuse(); }

protected:
    Acad::ErrorStatus refuse() { return fail(Acad::eFilerError); }
};

} // namespace embedded::dwg
