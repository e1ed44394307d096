#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "dbents.h"

#include <algorithm>

using namespace embedded;

namespace {

// How many are shown.
constexpr std::uint32_t kMostShown = 65536;

std::uint32_t atLeastOne(Adesk::UInt16 count) { return std::max<std::uint32_t>(count, 1); }

} // namespace

AcDbMInsertBlock::AcDbMInsertBlock() = default;

AcDbMInsertBlock::AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId block, Adesk::UInt16 columns,
                                   Adesk::UInt16 rows, double columnSpacing, double rowSpacing)
    : AcDbBlockReference(position, block) {
    m_fields = {columns, rows, columnSpacing, rowSpacing};
}

Adesk::UInt16 AcDbMInsertBlock::columns() const { return readField(*this, m_fields.columns); }

Acad::ErrorStatus AcDbMInsertBlock::setColumns(Adesk::UInt16 columns) {
    return setField(*this, m_fields.columns, columns);
}

Adesk::UInt16 AcDbMInsertBlock::rows() const { return readField(*this, m_fields.rows); }

Acad::ErrorStatus AcDbMInsertBlock::setRows(Adesk::UInt16 rows) {
    return setField(*this, m_fields.rows, rows);
}

double AcDbMInsertBlock::columnSpacing() const { return readField(*this, m_fields.columnSpacing); }

Acad::ErrorStatus AcDbMInsertBlock::setColumnSpacing(double spacing) {
    return setField(*this, m_fields.columnSpacing, spacing);
}

double AcDbMInsertBlock::rowSpacing() const { return readField(*this, m_fields.rowSpacing); }

Acad::ErrorStatus AcDbMInsertBlock::setRowSpacing(double spacing) {
    return setField(*this, m_fields.rowSpacing, spacing);
}

void AcDbMInsertBlock::axes(AcGeVector3d& alongRow, AcGeVector3d& alongColumn) const {
    AcGeMatrix3d ecs;
    getEcs(ecs);
    const AcGeMatrix3d turned = ecs * AcGeMatrix3d::rotation(rotation(), AcGeVector3d::kZAxis);
    alongRow = turned * AcGeVector3d::kXAxis;
    alongColumn = turned * AcGeVector3d::kYAxis;
}

std::vector<AcGeVector3d> AcDbMInsertBlock::offsets() const {
    AcGeVector3d alongRow, alongColumn;
    axes(alongRow, alongColumn);
    const std::uint32_t columns = atLeastOne(m_fields.columns);
    const std::uint32_t rows = atLeastOne(m_fields.rows);
    // Two of each leave the corners.
    const bool all = columns * rows <= kMostShown;
    const std::uint32_t columnStep = all ? 1 : std::max<std::uint32_t>(columns - 1, 1);
    const std::uint32_t rowStep = all ? 1 : std::max<std::uint32_t>(rows - 1, 1);
    std::vector<AcGeVector3d> found;
    for (std::uint32_t row = 0; row < rows; row += rowStep)
        for (std::uint32_t column = 0; column < columns; column += columnStep)
            found.push_back(alongRow * (column * m_fields.columnSpacing) +
                            alongColumn * (row * m_fields.rowSpacing));
    return found;
}

Acad::ErrorStatus AcDbMInsertBlock::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d alongRow, alongColumn;
    axes(alongRow, alongColumn);
    const AcGeVector3d column = xform * (alongRow * m_fields.columnSpacing);
    const AcGeVector3d row = xform * (alongColumn * m_fields.rowSpacing);
    const Acad::ErrorStatus es = AcDbBlockReference::subTransformBy(xform);
    if (es != Acad::eOk)
        return es;
    axes(alongRow, alongColumn);
    m_fields.columnSpacing = column.dotProduct(alongRow);
    m_fields.rowSpacing = row.dotProduct(alongColumn);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::subExplode(AcDbVoidPtrArray& entitySet) const {
    const std::vector<AcGeVector3d> places = offsets();
    if (places.size() != atLeastOne(m_fields.columns) * atLeastOne(m_fields.rows))
        return Acad::eCannotExplodeEntity;
    for (const AcGeVector3d& offset : places) {
        auto* part = new AcDbBlockReference;
        takeSettings(*this, *part);
        part->setBlockTableRecord(blockTableRecord());
        part->setNormal(normal());
        part->setPosition(position() + offset);
        part->setRotation(rotation());
        part->setScaleFactors(scaleFactors());
        entitySet.append(part);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbMInsertBlock::subWorldDraw(AcGiWorldDraw* worldDraw) {
    for (const AcGeVector3d& offset : offsets()) {
        if (worldDraw->regenAbort())
            return true;
        drawBlock(*worldDraw, AcGeMatrix3d::translation(offset) * blockTransform());
    }
    drawAttributes(*worldDraw);
    return true;
}

template <class F, class Stream>
void AcDbMInsertBlock::fileFields(F& f, Stream& s) {
    s.int16(f.columns);
    s.int16(f.rows);
    s.real(f.columnSpacing);
    s.real(f.rowSpacing);
}

void AcDbMInsertBlock::readMore(AcDbDwgFiler& filer) {
    FieldReader in(filer);
    Fields f;
    fileFields(f, in);
    if (in.ok())
        m_fields = f;
}

void AcDbMInsertBlock::writeMore(AcDbDwgFiler& filer) const {
    FieldWriter out(filer);
    fileFields(m_fields, out);
}
