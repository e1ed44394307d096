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

// The stream of group codes that objects file themselves to and from. A group is a code and one value; the
// code tells the kind of the value, whatever it is written as: a number under a text's code is written as its
// digits. Points take three groups (two in a plane) in the stream and are one value here, under the first
// one's code.
//
// Every operation answers the status of the stream after it: eOk, or the failure that stands, which the
// message of `errorMessage` explains. A write whose value the code cannot hold fails with eInvalidDxfCode or
// eOutOfRange.
class AcDbDxfFiler : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDxfFiler);

    enum { kDfltPrec = -1, kMaxPrec = 16 };

    // Reading begins anew. RTNORM, or RTERROR for a stream that is written.
    virtual int rewindFiler() = 0;
    // The first failure since the last reset, or eOk.
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual void resetFilerStatus() = 0;
    // A failure that stands from here on, with a message in the manner of wide printf; the one answer of the
    // second form is eInvalidInput. A failure that stands already is kept. Answers the one that stands.
    virtual Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR* format, ...) = 0;
    virtual Acad::ErrorStatus setError(const ACHAR* format, ...) = 0;
    // Never null; empty without a failure. Valid until the next operation.
    virtual const ACHAR* errorMessage() const = 0;
    virtual AcDb::FilerType filerType() const = 0;
    // In which ids are looked up by their handles; may be null.
    virtual AcDbDatabase* database() const = 0;
    virtual Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& version,
                                         AcDb::MaintenanceReleaseVersion& maintenance) const;
    // Significant digits of the reals that are written without a precision of their own; kDfltPrec is as many
    // as it takes to read the very value back.
    virtual int precision() const = 0;
    virtual void setPrecision(int digits) = 0;

    // The next value. eEndOfFile, with kDxfInvalid as code, at the end of the object: the first time that is
    // no failure of the stream; who reads on behind it gets eEndOfObject, which stands. Text and binary data
    // are the caller's (acutDelString, acutDelBuffer).
    virtual Acad::ErrorStatus readResBuf(resbuf* value) = 0;
    // By the value's own code and the member that belongs to it; a chain is not followed.
    virtual Acad::ErrorStatus writeResBuf(const resbuf& value) = 0;

    virtual Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 value) = 0;
    virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* text) = 0;
    virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const AcString& text) = 0;
    // More than 127 bytes become several groups of at most so many; each is read by itself.
    virtual Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& chunk) = 0;
    virtual Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& handle) = 0;
    virtual Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 value) = 0;
    // An unsigned number takes the upper half of its code's range if it has to, and is read as negative then.
    virtual Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) = 0;
    virtual Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) = 0;
    virtual Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) = 0;
    virtual Acad::ErrorStatus writeUInt64(AcDb::DxfCode code, Adesk::UInt64 value) = 0;
    virtual Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) = 0;
    virtual Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool value) = 0;
    virtual Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double value, int digits = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value,
                                           int digits = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value,
                                           int digits = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value,
                                            int digits = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value,
                                            int digits = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value,
                                           int digits = kDfltPrec) = 0;

    // Nothing more can be read. At the end of an object, of its extended data.
    virtual Adesk::Boolean atEOF() = 0;
    virtual Adesk::Boolean atEndOfObject() = 0;
    virtual Adesk::Boolean atExtendedData() = 0;
    // Whether a class's data begin here. If so, the mark is passed; otherwise nothing is read.
    virtual Adesk::Boolean atSubclassData(const ACHAR* className) = 0;
    virtual Adesk::Boolean atEmbeddedObjectStart() = 0;
    // The value that was read last is the next one again. Once; nothing happens without one.
    virtual void pushBackItem() = 0;

    virtual void writeXDataStart() = 0;
    virtual Acad::ErrorStatus writeEmbeddedObjectStart() = 0;

    virtual void haltAtClassName(const AcRxClass* cls);
    // Whether values are to be written that a reader would assume anyway; false.
    virtual bool includesDefaultValues() const;
    virtual double elevation() const;
    virtual double thickness() const;
    virtual Adesk::Boolean isModifyingExistingObject() const;

    Acad::ErrorStatus readItem(resbuf* value) { return readResBuf(value); }
    Acad::ErrorStatus writeItem(const resbuf& value) { return writeResBuf(value); }
    // The value under another code than its own.
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const resbuf& value) {
        resbuf copy = value;
        copy.restype = static_cast<short>(code);
        return writeResBuf(copy);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcDbObjectId& id) {
        return writeObjectId(code, id);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, bool value) { return writeBool(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int8 value) { return writeInt8(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int16 value) { return writeInt16(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int32 value) { return writeInt32(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int64 value) { return writeInt64(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt8 value) { return writeUInt8(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt16 value) { return writeUInt16(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt32 value) { return writeUInt32(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt64 value) { return writeUInt64(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, double value, int digits = kDfltPrec) {
        return writeDouble(code, value, digits);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const ACHAR* text) { return writeString(code, text); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcString& text) { return writeString(code, text); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const ads_binary& chunk) {
        return writeBChunk(code, chunk);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcDbHandle& handle) {
        return writeAcDbHandle(code, handle);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGePoint2d& value, int digits = kDfltPrec) {
        return writePoint2d(code, value, digits);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGePoint3d& value, int digits = kDfltPrec) {
        return writePoint3d(code, value, digits);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGeVector2d& value, int digits = kDfltPrec) {
        return writeVector2d(code, value, digits);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGeVector3d& value, int digits = kDfltPrec) {
        return writeVector3d(code, value, digits);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGeScale3d& value, int digits = kDfltPrec) {
        return writeScale3d(code, value, digits);
    }
};
