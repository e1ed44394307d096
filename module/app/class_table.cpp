#include "app/class_table.h"

#include "base/product_name.h"
#include "dbx/NamedSelection.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "dbx/elem/legacy_load.h"

namespace orv {

// Two classes share one DXF name: drawings tell them apart by the class name.
const ClassRow kObjCdbRecordRow = {L"ORV_CObjCdbRecord", L"AcDbObject",     21, 126, 0,
                                   L"ORV_CDBRECORD",     kLoaderApplication};
const ClassRow kCdbRecordRow = {L"ORV_CdbRecord", L"AcDbObject",     21, 126, 0,
                                L"ORV_CDBRECORD", kLoaderApplication};
const ClassRow kLoadRow = {L"ORV_Load", L"AcDbEntity", 31, 7, 0, L"ORV_LOAD", kLoaderApplication};
const ClassRow kNamedSelectionRow = {L"ORV_NamedSelection",  L"AcDbObject",     21, 126, 0,
                                     L"ORV_NAMED_SELECTION", kLoaderApplication};
// This one's DXF name is its class name as it stands.
const ClassRow kCCSysParRow = {L"ORV_CCSysPar", L"AcDbObject",     21, 126, 0,
                               L"ORV_CCSysPar", kLoaderApplication};

// clang-format off
const RegisteredClass kRegisteredClasses[] = {
    {&kObjCdbRecordRow, &ORV_CObjCdbRecord::rxInit},
    {&kCdbRecordRow, &ORV_CdbRecord::rxInit},
    {&kLoadRow, &elem::legacy::ORV_Load::rxInit},
    {&kNamedSelectionRow, &ORV_NamedSelection::rxInit},
    {&kCCSysParRow, &ORV_CCSysPar::rxInit},
};
// clang-format on
const int kRegisteredClassCount = static_cast<int>(sizeof kRegisteredClasses / sizeof kRegisteredClasses[0]);

} // namespace orv
