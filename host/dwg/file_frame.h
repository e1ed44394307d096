#pragma once

#include "db/database_core.h"
#include "dwg/class_table.h"
#include "dwg/drawing_parts.h"
#include "dwg/header_variables.h"
#include "dwg/object_kinds.h"

namespace embedded::dwg {

// What a database keeps of the drawing file that it came from or goes to.
class FileFrame : public DrawingFrame {
public:
    // For a drawing that was never in a file.
    FileFrame();
    // Takes a file's parts over. FileError if the variables or the class table cannot be read.
    explicit FileFrame(DrawingParts fileParts);

    std::vector<ClassTableRow> classTable() const override;
    std::string version() const override { return "AC1015"; }

    DrawingParts parts;
    HeaderVariables variables;
    ClassTable classes;
    TextCodec text;
    ObjectKinds kinds;
};

} // namespace embedded::dwg
