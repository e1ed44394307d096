#pragma once

#include "base/blob.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/export.h"

#include "dbmain.h"

#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>

namespace orv {

// One record in a drawing: bytes, and nothing that is known of them.
class TALDORK_API ORV_CdbRecord : public AcDbObject, public boost::noncopyable {
public:
    ORV_DECLARE_CLASS(ORV_CdbRecord);

    static constexpr unsigned int kVersion = 1;
    static constexpr unsigned int kMagic = 0xabf7d542;

    ORV_CdbRecord();
    // Holds a copy of the bytes.
    ORV_CdbRecord(const void* data, size_t len);

    // Need read. Null and 0 for a record without content; the bytes belong to the record.
    const void* getDataPtr() const;
    size_t getDataSize() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus readContent(AcDbDwgFiler* filer);
    Acad::ErrorStatus writeContent(AcDbDwgFiler* filer) const;

    boost::shared_ptr<Blob> m_data; // null in an object that was made empty and has not been read
};

} // namespace orv
