#include "dbxrecrd.h"

#include "db/field_stream.h"

using namespace embedded;

AcDbXrecord::AcDbXrecord() = default;

const std::vector<Adesk::UInt8>& AcDbXrecord::rawData() const {
    assertReadEnabled();
    return m_data;
}

Acad::ErrorStatus AcDbXrecord::setRawData(const std::vector<Adesk::UInt8>& data) {
    assertWriteEnabled();
    m_data = data;
    return Acad::eOk;
}

const std::vector<AcDbXrecord::Reference>& AcDbXrecord::references() const {
    assertReadEnabled();
    return m_references;
}

AcDb::DuplicateRecordCloning AcDbXrecord::mergeStyle() const {
    assertReadEnabled();
    return static_cast<AcDb::DuplicateRecordCloning>(m_cloning);
}

void AcDbXrecord::setMergeStyle(AcDb::DuplicateRecordCloning style) {
    assertWriteEnabled();
    m_cloning = static_cast<Adesk::UInt16>(style);
}

namespace {

// The codes that tell a strength; the file also has such that tell where an object stands, and no strength.
constexpr Adesk::UInt8 kSoftOwnerCode = 2;
constexpr Adesk::UInt8 kHardOwnerCode = 3;
constexpr Adesk::UInt8 kSoftPointerCode = 4;
constexpr Adesk::UInt8 kHardPointerCode = 5;
constexpr Adesk::UInt8 kLastStrength = kHardPointerCode;

// A filer that clones tells by the operation what is owned and what is hard.
void writeByStrength(AcDbDwgFiler& filer, const AcDbXrecord::Reference& reference) {
    if (reference.code == kSoftOwnerCode)
        filer.writeSoftOwnershipId(reference.id);
    else if (reference.code == kHardOwnerCode)
        filer.writeHardOwnershipId(reference.id);
    else if (reference.code == kHardPointerCode)
        filer.writeHardPointerId(reference.id);
    else
        filer.writeSoftPointerId(reference.id);
}

template <class Id>
AcDbObjectId read(AcDbDwgFiler& filer, Acad::ErrorStatus (AcDbDwgFiler::*operation)(Id*)) {
    Id id;
    (filer.*operation)(&id);
    return id;
}

AcDbObjectId readByStrength(AcDbDwgFiler& filer, Adesk::UInt8 code) {
    if (code == kSoftOwnerCode)
        return read(filer, &AcDbDwgFiler::readSoftOwnershipId);
    if (code == kHardOwnerCode)
        return read(filer, &AcDbDwgFiler::readHardOwnershipId);
    if (code == kHardPointerCode)
        return read(filer, &AcDbDwgFiler::readHardPointerId);
    return read(filer, &AcDbDwgFiler::readSoftPointerId);
}

// The drawing file ends the references where its handles end.
void writeReferences(AcDbDwgFiler& filer, const std::vector<AcDbXrecord::Reference>& references) {
    FieldFiler* file = fieldFiler(&filer);
    if (file == nullptr)
        filer.writeUInt32(static_cast<Adesk::UInt32>(references.size()));
    for (const AcDbXrecord::Reference& reference : references) {
        if (file != nullptr) {
            file->writeId(reference.code, reference.id);
        } else {
            filer.writeUInt8(reference.code);
            writeByStrength(filer, reference);
        }
    }
}

std::vector<AcDbXrecord::Reference> readReferences(AcDbDwgFiler& filer) {
    std::vector<AcDbXrecord::Reference> references;
    FieldFiler* file = fieldFiler(&filer);
    Adesk::UInt32 count = 0;
    if (file == nullptr)
        filer.readUInt32(&count);
    const auto more = [&] {
        return file != nullptr ? file->handleBitsLeft() >= 8 : references.size() < count;
    };
    while (filer.filerStatus() == Acad::eOk && more()) {
        AcDbXrecord::Reference reference;
        if (file != nullptr) {
            reference.id = file->readId(reference.code);
            if (reference.code > kLastStrength)
                reference.code = kSoftPointerCode;
        } else {
            filer.readUInt8(&reference.code);
            reference.id = readByStrength(filer, reference.code);
        }
        references.push_back(reference);
    }
    return references;
}

} // namespace

Acad::ErrorStatus AcDbXrecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbObject::dwgOutFields(filer), [&](FieldWriter& out) {
        out.int32(static_cast<Adesk::UInt32>(m_data.size()));
        out.bytes(m_data, m_data.size());
        out.int16(m_cloning);
        writeReferences(*filer, m_references);
    });
}

Acad::ErrorStatus AcDbXrecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbObject::dwgInFields(filer), [&](FieldReader& in) {
        Adesk::UInt32 length = 0;
        in.int32(length);
        in.bytes(m_data, length);
        in.int16(m_cloning);
        m_references = readReferences(*filer);
    });
}
