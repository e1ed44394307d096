// Writes a drawing of the example front end with elements that have loads beside or instead of what they are:
//
//   beam    a beam of length 10 with a load of case 1 of its own
//   both    an element with two loads, of the cases 1 and 2, along one line
//   first   a load of case 1
//   old     a load on an element that has this only in the part of the data that loads share
//
// With `loose` as second argument they belong to no system.

#include "arx/dictionary_utils.h"
#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "dbx/doc/drawing_unit.h"
#include "embedded/host_start.h"
#include "orvshape/curve_segment.h"
#include "platform/text.h"
#include "rxdlinkr.h"
#include "structure/beam.h"
#include "structure/beam_load.h"
#include "structure/free_load.h"
#include "structure/load.h"
#include "structure/model_store.h"

#include <boost/make_shared.hpp>

#include <cstdio>
#include <cstring>
#include <deque>

namespace {

using structure::FreeLoad;
using structure::Load;
using structure::LoadProperties;
using structure::LoadShape;

AcDbObjectId put(AcDbDatabase& drawing, AcDbEntity* entity) {
    AcDbBlockTable* blocks = nullptr;
    AcDbBlockTableRecord* space = nullptr;
    drawing.getBlockTable(blocks, AcDb::kForRead);
    blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
    AcDbObjectId id;
    space->appendAcDbEntity(id, entity);
    entity->close();
    space->close();
    blocks->close();
    return id;
}

// A load along the curve of the element that it is added to.
boost::shared_ptr<FreeLoad> lineLoad(unsigned int loadCase, LoadShape shape) {
    const auto load = boost::make_shared<FreeLoad>();
    load->setDistribution(orv::elem::kLineLoad);
    load->setLoadCase(loadCase);
    load->setShape(shape);
    std::deque<orv::elem::LoadVertex> vertices(2);
    vertices[0].value = vertices[1].value = 4.0;
    vertices[1].position = 1.0;
    load->setVertices(vertices);
    return load;
}

Load* namedLoad(std::unique_ptr<Load> load, const wchar_t* name) {
    load->general()->setName(name);
    return load.release();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return 2;
    embedded::startHost();
    if (!acrxDynamicLinker->loadModule(L"structure191_x64.dbx", false)) {
        std::fputs("the example's module cannot be loaded\n", stderr);
        return 1;
    }
    AcDbDatabase drawing(true);
    acdbHostApplicationServices()->setWorkingDatabase(&drawing);
    structure::ModelStore store;
    if (argc == 2)
        store = structure::findOrCreateStore(drawing, L"", orv::kUnitMetre);
    const auto bind = [&](structure::Element& element) {
        if (argc == 2)
            element.bindTo(store.id, store.name);
    };

    orv::CurveSegment segment;
    orv::CurveSegment::line(AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(10.0, 0.0, 0.0), segment);
    auto* const beam = new structure::Beam(segment);
    beam->general()->setName(L"beam");
    beam->addPlugin(lineLoad(1, LoadShape::kLinear));
    bind(*beam);
    const AcDbObjectId beamId = put(drawing, beam);

    LoadProperties properties;
    properties.values = {4.0, 4.0};
    Load* const both = namedLoad(
        Load::alongLine({AcGePoint3d(0.0, 5.0, 0.0), AcGePoint3d(10.0, 5.0, 0.0)}, properties), L"both");
    both->addPlugin(lineLoad(2, LoadShape::kQuadraticMid));
    bind(*both);
    put(drawing, both);

    Load* const first = namedLoad(
        Load::alongLine({AcGePoint3d(0.0, 9.0, 0.0), AcGePoint3d(10.0, 9.0, 0.0)}, properties), L"first");
    bind(*first);
    put(drawing, first);

    properties.values = {4.0};
    Load* const old = namedLoad(Load::forBeam(0.5, 0.5, properties), L"old");
    old->plugin()->setElement(beamId);
    bind(*old);
    put(drawing, old);

    const bool isDone = drawing.saveAs(platform::fromUtf8(argv[1]).c_str()) == Acad::eOk;
    if (!isDone)
        std::fputs("the drawing cannot be written\n", stderr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return isDone ? 0 : 1;
}
