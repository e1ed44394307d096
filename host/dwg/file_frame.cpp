#include "dwg/file_frame.h"

#include "dwg/new_drawing.h"

namespace embedded::dwg {

FileFrame::FileFrame() : parts(partsOfNewDrawing()), text(parts.codePage), kinds(classes, text) {
    fillNewVariables(variables);
}

FileFrame::FileFrame(DrawingParts fileParts)
    : parts(std::move(fileParts)), variables(HeaderVariables::read(parts.headerVariables)),
      classes(ClassTable::read(parts.classes)), text(parts.codePage), kinds(classes, text) {}

std::vector<ClassTableRow> FileFrame::classTable() const {
    std::vector<ClassTableRow> rows;
    for (const ClassRow& row : classes.rows()) {
        ClassTableRow told;
        told.number = row.number;
        told.proxyFlags = row.proxyFlags;
        told.applicationName = text.decode(ClassRow::text(row.application));
        told.className = text.decode(ClassRow::text(row.className));
        told.dxfName = text.decode(ClassRow::text(row.dxfName));
        told.wasAZombie = row.wasZombie;
        told.isEntity = row.makesEntities();
        rows.push_back(std::move(told));
    }
    return rows;
}

} // namespace embedded::dwg
