#pragma once

#include "AdAChar.h"
#include "acdb.h"
#include "adsdef.h"
#include "dbid.h"
#include "rxobject.h"

class AcDbDatabase;
class AcGePoint2d;
class AcGePoint3d;
class AcGeScale3d;
class AcGeVector2d;
class AcGeVector3d;
class AcString;

// The binary stream that objects file themselves to and from. Values come back in the order in which they
// were written. Every operation answers the status of the stream after it: eOk, or the failure that stands; a
// failed read gives zero or empty. Text that is read into an `ACHAR*` is the caller's, to be given back with
// acutDelBuffer.
class AcDbDwgFiler : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDwgFiler);

    // The first failure since the last reset, or eOk.
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual AcDb::FilerType filerType() const = 0;
    virtual void setFilerStatus(Acad::ErrorStatus es) = 0;
    virtual void resetFilerStatus() = 0;

    // The file format's version that is read or written; eOk.
    virtual Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& version,
                                         AcDb::MaintenanceReleaseVersion& maintenance) const;

    virtual Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) = 0;
    virtual Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) = 0;
    virtual Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) = 0;
    virtual Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) = 0;
    virtual Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) = 0;
    virtual Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) = 0;
    virtual Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) = 0;
    virtual Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) = 0;

    virtual Acad::ErrorStatus readInt8(Adesk::Int8* value) = 0;
    virtual Acad::ErrorStatus writeInt8(Adesk::Int8 value) = 0;
    virtual Acad::ErrorStatus readString(ACHAR** text) = 0;
    virtual Acad::ErrorStatus writeString(const ACHAR* text) = 0;
    virtual Acad::ErrorStatus readString(AcString& text) = 0;
    virtual Acad::ErrorStatus writeString(const AcString& text) = 0;
    // A run of bytes that carries its own length; `buf` of what is read is the caller's (acutDelBuffer).
    virtual Acad::ErrorStatus readBChunk(ads_binary* chunk) = 0;
    virtual Acad::ErrorStatus writeBChunk(const ads_binary& chunk) = 0;
    virtual Acad::ErrorStatus readAcDbHandle(AcDbHandle* handle) = 0;
    virtual Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& handle) = 0;
    virtual Acad::ErrorStatus readInt64(Adesk::Int64* value) = 0;
    virtual Acad::ErrorStatus writeInt64(Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus readInt32(Adesk::Int32* value) = 0;
    virtual Acad::ErrorStatus writeInt32(Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus readInt16(Adesk::Int16* value) = 0;
    virtual Acad::ErrorStatus writeInt16(Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus readUInt8(Adesk::UInt8* value) = 0;
    virtual Acad::ErrorStatus writeUInt8(Adesk::UInt8 value) = 0;
    virtual Acad::ErrorStatus readUInt16(Adesk::UInt16* value) = 0;
    virtual Acad::ErrorStatus writeUInt16(Adesk::UInt16 value) = 0;
    virtual Acad::ErrorStatus readUInt32(Adesk::UInt32* value) = 0;
    virtual Acad::ErrorStatus writeUInt32(Adesk::UInt32 value) = 0;
    virtual Acad::ErrorStatus readUInt64(Adesk::UInt64* value) = 0;
    virtual Acad::ErrorStatus writeUInt64(Adesk::UInt64 value) = 0;
    virtual Acad::ErrorStatus readBoolean(Adesk::Boolean* value) = 0;
    virtual Acad::ErrorStatus writeBoolean(Adesk::Boolean value) = 0;
    virtual Acad::ErrorStatus readBool(bool* value) = 0;
    virtual Acad::ErrorStatus writeBool(bool value) = 0;
    virtual Acad::ErrorStatus readDouble(double* value) = 0;
    virtual Acad::ErrorStatus writeDouble(double value) = 0;
    virtual Acad::ErrorStatus readPoint2d(AcGePoint2d* value) = 0;
    virtual Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) = 0;
    virtual Acad::ErrorStatus readPoint3d(AcGePoint3d* value) = 0;
    virtual Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) = 0;
    virtual Acad::ErrorStatus readVector2d(AcGeVector2d* value) = 0;
    virtual Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) = 0;
    virtual Acad::ErrorStatus readVector3d(AcGeVector3d* value) = 0;
    virtual Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) = 0;
    virtual Acad::ErrorStatus readScale3d(AcGeScale3d* value) = 0;
    virtual Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) = 0;
    // `length` bytes as they are, without a length of their own.
    virtual Acad::ErrorStatus readBytes(void* bytes, Adesk::UIntPtr length) = 0;
    virtual Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UIntPtr length) = 0;
    virtual Acad::ErrorStatus readAddress(void** address) = 0;
    virtual Acad::ErrorStatus writeAddress(const void* address) = 0;

    virtual Acad::ErrorStatus seek(Adesk::Int64 offset, int method) = 0;
    virtual Adesk::Int64 tell() const = 0;

    // Whether ids are gathered instead of filed; false unless a filer says otherwise.
    virtual Adesk::Boolean usesReferences() const;
    virtual void addReference(AcDbObjectId id);

    Acad::ErrorStatus readItem(AcDbHardOwnershipId* id) { return readHardOwnershipId(id); }
    Acad::ErrorStatus writeItem(const AcDbHardOwnershipId& id) { return writeHardOwnershipId(id); }
    Acad::ErrorStatus readItem(AcDbHardPointerId* id) { return readHardPointerId(id); }
    Acad::ErrorStatus writeItem(const AcDbHardPointerId& id) { return writeHardPointerId(id); }
    Acad::ErrorStatus readItem(AcDbSoftOwnershipId* id) { return readSoftOwnershipId(id); }
    Acad::ErrorStatus writeItem(const AcDbSoftOwnershipId& id) { return writeSoftOwnershipId(id); }
    Acad::ErrorStatus readItem(AcDbSoftPointerId* id) { return readSoftPointerId(id); }
    Acad::ErrorStatus writeItem(const AcDbSoftPointerId& id) { return writeSoftPointerId(id); }
    Acad::ErrorStatus readItem(Adesk::Int8* value) { return readInt8(value); }
    Acad::ErrorStatus writeItem(Adesk::Int8 value) { return writeInt8(value); }
    Acad::ErrorStatus readItem(Adesk::Int16* value) { return readInt16(value); }
    Acad::ErrorStatus writeItem(Adesk::Int16 value) { return writeInt16(value); }
    Acad::ErrorStatus readItem(Adesk::Int32* value) { return readInt32(value); }
    Acad::ErrorStatus writeItem(Adesk::Int32 value) { return writeInt32(value); }
    Acad::ErrorStatus readItem(Adesk::Int64* value) { return readInt64(value); }
    Acad::ErrorStatus writeItem(Adesk::Int64 value) { return writeInt64(value); }
    Acad::ErrorStatus readItem(Adesk::UInt8* value) { return readUInt8(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt8 value) { return writeUInt8(value); }
    Acad::ErrorStatus readItem(Adesk::UInt16* value) { return readUInt16(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt16 value) { return writeUInt16(value); }
    Acad::ErrorStatus readItem(Adesk::UInt32* value) { return readUInt32(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt32 value) { return writeUInt32(value); }
    Acad::ErrorStatus readItem(Adesk::UInt64* value) { return readUInt64(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt64 value) { return writeUInt64(value); }
    Acad::ErrorStatus readItem(bool* value) { return readBool(value); }
    Acad::ErrorStatus writeItem(bool value) { return writeBool(value); }
    Acad::ErrorStatus readItem(double* value) { return readDouble(value); }
    Acad::ErrorStatus writeItem(double value) { return writeDouble(value); }
    Acad::ErrorStatus readItem(AcString& value) { return readString(value); }
    Acad::ErrorStatus writeItem(const AcString& value) { return writeString(value); }
    Acad::ErrorStatus writeItem(const ACHAR* value) { return writeString(value); }
    Acad::ErrorStatus readItem(AcGePoint3d* value) { return readPoint3d(value); }
    Acad::ErrorStatus writeItem(const AcGePoint3d& value) { return writePoint3d(value); }
    Acad::ErrorStatus readItem(AcGeVector3d* value) { return readVector3d(value); }
    Acad::ErrorStatus writeItem(const AcGeVector3d& value) { return writeVector3d(value); }
};
