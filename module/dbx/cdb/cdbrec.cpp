#include "dbx/cdb/cdbrec.h"

#include "app/class_table.h"
#include "base/product_name.h"
#include "orvcore/warn_on_new_version.h"

#include <boost/make_shared.hpp>

namespace orv {

ORV_DEFINE_CLASS(ORV_CdbRecord, kCdbRecordRow)

ORV_CdbRecord::ORV_CdbRecord() = default;

ORV_CdbRecord::ORV_CdbRecord(const void* data, size_t len) : m_data(boost::make_shared<Blob>(data, len)) {}

const void* ORV_CdbRecord::getDataPtr() const {
    assertReadEnabled();
    return m_data ? m_data->data() : nullptr;
}

size_t ORV_CdbRecord::getDataSize() const {
    assertReadEnabled();
    return m_data ? m_data->size() : 0;
}

Acad::ErrorStatus ORV_CdbRecord::dwgInFields(AcDbDwgFiler* filer) {
    try {
        assertWriteEnabled();
        AcDbObject::dwgInFields(filer);
        return readContent(filer);
    }
    ORV_CRITICAL_GUARD(status::kImproperlyRead)
}

Acad::ErrorStatus ORV_CdbRecord::readContent(AcDbDwgFiler* filer) {
    Adesk::UInt32 version = 0;
    ORV_NOTE_STATUS(filer->readUInt32(&version));
    if (version > kVersion)
        return status::kImproperlyRead;
    orv_warnOnNewVersion(version, kVersion, productName());

    m_data = boost::make_shared<Blob>();
    ORV_NOTE_STATUS(m_data->dwgIn(filer));

    // The magic is consumed and not compared: no record is refused for it.
    Adesk::UInt32 magic = 0;
    ORV_NOTE_STATUS(filer->readUInt32(&magic));
    return filer->filerStatus();
}

Acad::ErrorStatus ORV_CdbRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    try {
        assertReadEnabled();
        AcDbObject::dwgOutFields(filer);
        return writeContent(filer);
    }
    ORV_CRITICAL_GUARD(status::kFilingFailed)
}

Acad::ErrorStatus ORV_CdbRecord::writeContent(AcDbDwgFiler* filer) const {
    ORV_NOTE_STATUS(filer->writeUInt32(kVersion));
    ORV_NOTE_STATUS(m_data ? m_data->dwgOut(filer) : Blob().dwgOut(filer));
    ORV_NOTE_STATUS(filer->writeUInt32(kMagic));
    return filer->filerStatus();
}

} // namespace orv
