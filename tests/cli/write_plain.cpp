// Writes a drawing with a line, a line on a layer that is not to be plotted, and a hatch that is too dense to
// be evaluated.

#include "dbents.h"
#include "dbhatch.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "embedded/host_start.h"
#include "platform/text.h"

#include <cstdio>

namespace {

void put(AcDbDatabase& drawing, AcDbEntity* entity) {
    AcDbBlockTable* blocks = nullptr;
    AcDbBlockTableRecord* space = nullptr;
    drawing.getBlockTable(blocks, AcDb::kForRead);
    blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
    AcDbObjectId id;
    space->appendAcDbEntity(id, entity);
    entity->close();
    space->close();
    blocks->close();
}

AcDbObjectId addScreenLayer(AcDbDatabase& drawing) {
    AcDbLayerTable* layers = nullptr;
    drawing.getLayerTable(layers, AcDb::kForWrite);
    auto* const layer = new AcDbLayerTableRecord;
    layer->setName(L"SCREEN");
    layer->setIsPlottable(false);
    AcDbObjectId id;
    layers->add(id, layer);
    layer->close();
    layers->close();
    return id;
}

AcDbHatch* denseHatch() {
    auto* const hatch = new AcDbHatch;
    hatch->setPatternSpace(1.0e-6);
    hatch->setPattern(AcDbHatch::kUserDefined, L"_U");
    AcGePoint2dArray corners;
    for (const AcGePoint2d& corner : {AcGePoint2d(0, 0), AcGePoint2d(50, 0), AcGePoint2d(0, 50)})
        corners.append(corner);
    hatch->appendLoop(AcDbHatch::kDefault, corners, AcGeDoubleArray());
    return hatch;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    embedded::startHost();
    AcDbDatabase drawing(true);
    put(drawing, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    auto* const onScreen = new AcDbLine({0, 0, 0}, {0, 9000, 0});
    onScreen->setLayer(addScreenLayer(drawing));
    put(drawing, onScreen);
    put(drawing, denseHatch());
    const bool isDone = drawing.saveAs(platform::fromUtf8(argv[1]).c_str()) == Acad::eOk;
    if (!isDone)
        std::fputs("the drawing cannot be written\n", stderr);
    return isDone ? 0 : 1;
}
