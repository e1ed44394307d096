#pragma once

#include "dbmain.h"

#include <vector>

// Data of an application: a run of typed values, which is kept as the bytes that the drawing file has for it,
// and the objects that it refers to.
class AcDbXrecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord);
    AcDbXrecord();

    // An object that the record refers to, with the drawing file's code of how: 2 and 3 soft and hard owner,
    // 4 and 5 soft and hard pointer.
    struct Reference {
        Adesk::UInt8 code = 4;
        AcDbObjectId id;
    };

    // Needs read. Group codes of 16 bits, each with its value behind.
    const std::vector<Adesk::UInt8>& rawData() const;
    // Needs write. eOk.
    Acad::ErrorStatus setRawData(const std::vector<Adesk::UInt8>& data);
    const std::vector<Reference>& references() const;

    AcDb::DuplicateRecordCloning mergeStyle() const;
    void setMergeStyle(AcDb::DuplicateRecordCloning style);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    std::vector<Adesk::UInt8> m_data;
    std::vector<Reference> m_references;
    Adesk::UInt16 m_cloning = AcDb::kDrcIgnore;
};
