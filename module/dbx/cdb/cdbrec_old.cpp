#include "dbx/cdb/cdbrec_old.h"

#include "app/class_table.h"
#include "base/product_name.h"
#include "orvcore/warn_on_new_version.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

ORV_DEFINE_CLASS(ORV_CObjCdbRecord, orv::kObjCdbRecordRow)

namespace {

// Up to here a block is made before its bytes are read. Above, the bytes are gathered first, so that a
// damaged length cannot take more memory than the stream has bytes to fill.
constexpr Adesk::Int32 kTrustedLength = 16 << 20;

char* newBlock(Adesk::Int32 len) {
    if (len < 0)
        throw std::bad_array_new_length();
    return new char[static_cast<size_t>(len)]();
}

} // namespace

ORV_CObjCdbRecord::ORV_CObjCdbRecord() : m_version(0), m_len(0), m_data(nullptr) {}

ORV_CObjCdbRecord::ORV_CObjCdbRecord(const void* data, Adesk::Int32 len)
    : m_version(0), m_len(len), m_data(newBlock(len)) {
    ORV_ASSERT(m_data);
    if (len > 0)
        std::memcpy(m_data, data, static_cast<size_t>(len));
}

ORV_CObjCdbRecord::~ORV_CObjCdbRecord() { delete[] m_data; }

void ORV_CObjCdbRecord::setData(const void* data, Adesk::Int32 len) {
    assertWriteEnabled();
    if (len != m_len)
        replaceBlock(len);
    if (len > 0)
        std::memcpy(m_data, data, static_cast<size_t>(len));
}

void* ORV_CObjCdbRecord::getData() { return m_data; }

Adesk::Int32 ORV_CObjCdbRecord::getLen() { return m_len; }

void ORV_CObjCdbRecord::replaceBlock(Adesk::Int32 len) {
    delete[] m_data;
    m_data = nullptr;
    m_len = 0; // so that a refused allocation leaves an empty record
    m_data = newBlock(len);
    m_len = len;
}

Acad::ErrorStatus ORV_CObjCdbRecord::dwgInFields(AcDbDwgFiler* filer) {
    try {
        assertWriteEnabled();
        AcDbObject::dwgInFields(filer);
        return readContent(filer);
    }
    ORV_CRITICAL_GUARD(orv::status::kImproperlyRead)
}

Acad::ErrorStatus ORV_CObjCdbRecord::readContent(AcDbDwgFiler* filer) {
    Adesk::Int16 version = 0;
    ORV_NOTE_STATUS(filer->readInt16(&version));
    if (m_version < version)
        return orv::status::kImproperlyRead;
    orv_warnOnNewVersion(version, m_version, orv::productName());

    Adesk::Int32 filedLen = 0;
    ORV_NOTE_STATUS(filer->readInt32(&filedLen));
    ORV_NOTE_STATUS(readBytes(filer, filedLen));
    return filer->filerStatus();
}

Acad::ErrorStatus ORV_CObjCdbRecord::readBytes(AcDbDwgFiler* filer, Adesk::Int32 filedLen) {
    if (filedLen <= kTrustedLength) {
        if (filedLen != m_len)
            replaceBlock(filedLen);
        return filer->readBytes(m_data, static_cast<Adesk::UIntPtr>(m_len));
    }
    std::vector<char> gathered;
    while (gathered.size() < static_cast<size_t>(filedLen)) {
        const size_t have = gathered.size();
        gathered.resize(have + std::min<size_t>(kTrustedLength, filedLen - have));
        const Acad::ErrorStatus es = filer->readBytes(gathered.data() + have, gathered.size() - have);
        if (es != Acad::eOk) {
            replaceBlock(0);
            return es;
        }
    }
    if (filedLen != m_len)
        replaceBlock(filedLen);
    std::memcpy(m_data, gathered.data(), gathered.size());
    return Acad::eOk;
}

Acad::ErrorStatus ORV_CObjCdbRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    try {
        assertReadEnabled();
        AcDbObject::dwgOutFields(filer);
        return writeContent(filer);
    }
    ORV_CRITICAL_GUARD(orv::status::kFilingFailed)
}

Acad::ErrorStatus ORV_CObjCdbRecord::writeContent(AcDbDwgFiler* filer) const {
    ORV_NOTE_STATUS(filer->writeInt16(m_version));
    ORV_NOTE_STATUS(filer->writeInt32(m_len));
    // Also for no bytes at all: the call belongs to the sequence.
    ORV_NOTE_STATUS(filer->writeBytes(m_data, static_cast<Adesk::UIntPtr>(m_len)));
    return filer->filerStatus();
}

Acad::ErrorStatus ORV_CObjCdbRecord::subOpen(AcDb::OpenMode mode) { return AcDbObject::subOpen(mode); }

Acad::ErrorStatus ORV_CObjCdbRecord::subClose() { return AcDbObject::subClose(); }
