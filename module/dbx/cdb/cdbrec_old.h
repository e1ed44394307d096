#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/export.h"

#include "dbmain.h"

// A record of older drawings, and what general data are kept in to this day. Unlike the newer class its
// content can be changed in place.
class TALDORK_API ORV_CObjCdbRecord : public AcDbObject {
public:
    ORV_DECLARE_CLASS(ORV_CObjCdbRecord);

    ORV_CObjCdbRecord();
    // Holds a copy of the bytes.
    ORV_CObjCdbRecord(const void* data, Adesk::Int32 len);
    ~ORV_CObjCdbRecord() override;

    // Needs write. Copies the bytes over the present ones; the block is replaced only when the length
    // changes.
    void setData(const void* data, Adesk::Int32 len);
    // The bytes, which belong to the record. Null in a fresh object. The open state is not looked at.
    void* getData();
    Adesk::Int32 getLen();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subOpen(AcDb::OpenMode mode) override;
    Acad::ErrorStatus subClose() override;

private:
    void replaceBlock(Adesk::Int32 len);
    Acad::ErrorStatus readContent(AcDbDwgFiler* filer);
    Acad::ErrorStatus readBytes(AcDbDwgFiler* filer, Adesk::Int32 filedLen);
    Acad::ErrorStatus writeContent(AcDbDwgFiler* filer) const;

    Adesk::Int16 m_version; // 0 for ever: filed out, and the highest that is accepted on filing in
    Adesk::Int32 m_len;
    char* m_data;
};
