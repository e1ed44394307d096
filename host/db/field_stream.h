#pragma once

#include "AcString.h"
#include "db/field_filer.h"
#include "dbfiler.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

// A class lists its fields once, in the file's order, in a template over one of these two; reading and
// writing cannot drift apart then. To the drawing file each field takes the code that is named behind it;
// other filers get plain values.
namespace embedded {

class FieldReader {
public:
    explicit FieldReader(AcDbDwgFiler& filer) : m_filer(filer), m_file(fieldFiler(&filer)) {}

    bool ok() const { return m_filer.filerStatus() == Acad::eOk; }
    bool toFile() const { return m_file != nullptr; }

    void flag(bool& value) { m_filer.readBool(&value); }               // B
    void byte(Adesk::UInt8& value) { m_filer.readUInt8(&value); }      // RC
    void int16(Adesk::UInt16& value) { m_filer.readUInt16(&value); }   // BS
    void int32(Adesk::UInt32& value) { m_filer.readUInt32(&value); }   // BL
    void real(double& value) { m_filer.readDouble(&value); }           // BD
    void text(AcString& value) { m_filer.readString(value); }          // TV
    void point(AcGePoint3d& value) { m_filer.readPoint3d(&value); }    // 3BD
    void vector(AcGeVector3d& value) { m_filer.readVector3d(&value); } // 3BD
    void point(AcGePoint2d& value) { m_filer.readPoint2d(&value); }    // 2BD
    void colour(Adesk::UInt16& value) {                                // CMC
        if (m_file != nullptr)
            value = m_file->readColour();
        else
            int16(value);
    }
    void bits(Adesk::UInt8& value, unsigned count) {
        if (m_file != nullptr)
            value = static_cast<Adesk::UInt8>(m_file->readBits(count));
        else
            byte(value);
    }
    void rawReal(double& value) { // RD
        if (m_file != nullptr)
            value = m_file->readRawDouble();
        else
            real(value);
    }
    // DD: as its difference from a value that both sides know.
    void realBy(double& value, double known) {
        if (m_file != nullptr)
            value = m_file->readDoubleWithDefault(known);
        else
            real(value);
    }
    void thickness(double& value) { // BT
        Adesk::UInt8 none = 0;
        if (m_file != nullptr)
            bits(none, 1);
        value = 0.0;
        if (none == 0)
            real(value);
    }
    void extrusion(AcGeVector3d& value) { // BE
        Adesk::UInt8 up = 0;
        if (m_file != nullptr)
            bits(up, 1);
        value = AcGeVector3d::kZAxis;
        if (up == 0)
            vector(value);
    }
    void rawPoint(AcGePoint2d& value) { // 2RD
        rawReal(value.x);
        rawReal(value.y);
    }
    // A run whose length both sides know.
    void bytes(std::vector<std::uint8_t>& value, std::size_t length) {
        if (m_file != nullptr && length > m_file->dataBitsLeft() / 8) {
            m_filer.setFilerStatus(Acad::eDwgObjectImproperlyRead);
            length = 0;
        }
        value.resize(ok() ? length : 0);
        m_filer.readBytes(value.data(), value.size());
    }
    void softOwner(AcDbObjectId& id) { readId<AcDbSoftOwnershipId>(id, &AcDbDwgFiler::readSoftOwnershipId); }
    void hardOwner(AcDbObjectId& id) { readId<AcDbHardOwnershipId>(id, &AcDbDwgFiler::readHardOwnershipId); }
    void softPointer(AcDbObjectId& id) { readId<AcDbSoftPointerId>(id, &AcDbDwgFiler::readSoftPointerId); }
    void hardPointer(AcDbObjectId& id) { readId<AcDbHardPointerId>(id, &AcDbDwgFiler::readHardPointerId); }
    // A count of handles that follow, cut to what the stream can hold.
    void handleCount(std::size_t& count) {
        if (m_file == nullptr || count <= m_file->handleBitsLeft() / 8)
            return;
        m_filer.setFilerStatus(Acad::eDwgObjectImproperlyRead);
        count = 0;
    }

private:
    template <class Id>
    void readId(AcDbObjectId& id, Acad::ErrorStatus (AcDbDwgFiler::*read)(Id*)) {
        Id filed;
        (m_filer.*read)(&filed);
        id = filed;
    }

    AcDbDwgFiler& m_filer;
    FieldFiler* m_file;
};

class FieldWriter {
public:
    explicit FieldWriter(AcDbDwgFiler& filer) : m_filer(filer), m_file(fieldFiler(&filer)) {}

    bool ok() const { return m_filer.filerStatus() == Acad::eOk; }
    bool toFile() const { return m_file != nullptr; }

    void flag(bool value) { m_filer.writeBool(value); }
    void byte(Adesk::UInt8 value) { m_filer.writeUInt8(value); }
    void int16(Adesk::UInt16 value) { m_filer.writeUInt16(value); }
    void int32(Adesk::UInt32 value) { m_filer.writeUInt32(value); }
    void real(double value) { m_filer.writeDouble(value); }
    void text(const AcString& value) { m_filer.writeString(value); }
    void point(const AcGePoint3d& value) { m_filer.writePoint3d(value); }
    void vector(const AcGeVector3d& value) { m_filer.writeVector3d(value); }
    void point(const AcGePoint2d& value) { m_filer.writePoint2d(value); }
    void colour(Adesk::UInt16 value) {
        if (m_file != nullptr)
            m_file->writeColour(value);
        else
            int16(value);
    }
    void bits(Adesk::UInt8 value, unsigned count) {
        if (m_file != nullptr)
            m_file->writeBits(value, count);
        else
            byte(value);
    }
    void rawReal(double value) {
        if (m_file != nullptr)
            m_file->writeRawDouble(value);
        else
            real(value);
    }
    void realBy(double value, double known) {
        if (m_file != nullptr)
            m_file->writeDoubleWithDefault(value, known);
        else
            real(value);
    }
    // A negative zero has a sign to keep, so it takes the long form.
    void thickness(double value) {
        const bool none = m_file != nullptr && isPlainZero(value);
        if (m_file != nullptr)
            bits(none ? 1 : 0, 1);
        if (!none)
            real(value);
    }
    void extrusion(const AcGeVector3d& value) {
        const bool up = m_file != nullptr && isPlainZero(value.x) && isPlainZero(value.y) && value.z == 1.0;
        if (m_file != nullptr)
            bits(up ? 1 : 0, 1);
        if (!up)
            vector(value);
    }
    static bool isPlainZero(double value) { return value == 0.0 && !std::signbit(value); }
    void rawPoint(const AcGePoint2d& value) {
        rawReal(value.x);
        rawReal(value.y);
    }
    void bytes(const std::vector<std::uint8_t>& value, std::size_t length) {
        m_filer.writeBytes(value.data(), std::min(length, value.size()));
    }
    void softOwner(const AcDbObjectId& id) { m_filer.writeSoftOwnershipId(id); }
    void hardOwner(const AcDbObjectId& id) { m_filer.writeHardOwnershipId(id); }
    void softPointer(const AcDbObjectId& id) { m_filer.writeSoftPointerId(id); }
    void hardPointer(const AcDbObjectId& id) { m_filer.writeHardPointerId(id); }
    void handleCount(std::size_t&) {}

private:
    AcDbDwgFiler& m_filer;
    FieldFiler* m_file;
};

// The two halves of a class's filing behind its base's, which answered `es`.
template <class List>
Acad::ErrorStatus writeFields(AcDbDwgFiler* filer, Acad::ErrorStatus es, List list) {
    if (es != Acad::eOk)
        return es;
    FieldWriter out(*filer);
    list(out);
    return filer->filerStatus();
}

template <class List>
Acad::ErrorStatus readFields(AcDbDwgFiler* filer, Acad::ErrorStatus es, List list) {
    if (es != Acad::eOk)
        return es;
    FieldReader in(*filer);
    list(in);
    return filer->filerStatus();
}

} // namespace embedded
