#pragma once

#include "entities/block_reference.h"

// A block that is shown many times, in columns and rows along the reference's own axes. What is not said here
// is the block reference's, whose position is that of the first one.
class AcDbMInsertBlock : public AcDbBlockReference {
public:
    ACRX_DECLARE_MEMBERS(AcDbMInsertBlock);
    AcDbMInsertBlock();
    AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId block, Adesk::UInt16 columns,
                     Adesk::UInt16 rows, double columnSpacing, double rowSpacing);

    // Getters need read; setters need write and answer eOk. 0 columns or rows show as one.
    Adesk::UInt16 columns() const;
    Acad::ErrorStatus setColumns(Adesk::UInt16 columns);
    Adesk::UInt16 rows() const;
    Acad::ErrorStatus setRows(Adesk::UInt16 rows);
    // In drawing units, whatever the scale factors; below 0 the other way.
    double columnSpacing() const;
    Acad::ErrorStatus setColumnSpacing(double spacing);
    double rowSpacing() const;
    Acad::ErrorStatus setRowSpacing(double spacing);

protected:
    // The spacings are scaled along.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    // A block reference for each, row by row. eCannotExplodeEntity for more than can be shown.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    // Of more than 65536 only those at the corners are shown: of so many none can be told from another, and
    // damaged counts must not hang whoever draws.
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
    void readMore(AcDbDwgFiler& filer) override;
    void writeMore(AcDbDwgFiler& filer) const override;

private:
    struct Fields {
        Adesk::UInt16 columns = 1;
        Adesk::UInt16 rows = 1;
        double columnSpacing = 0.0;
        double rowSpacing = 0.0;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    // The reference's own axes in the world, of length 1.
    void axes(AcGeVector3d& alongRow, AcGeVector3d& alongColumn) const;
    // From the first one to each that is shown.
    std::vector<AcGeVector3d> offsets() const;
    Fields m_fields;
};
