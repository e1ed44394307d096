#include "app/class_table.h"

#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"

namespace orv {

namespace {

// The application that the host demand-loads for all of them; it is the small loader's name, not this
// module's.
constexpr const wchar_t* kLoader = L"ORV_OE_LOADER_191";

} // namespace

// Two classes share one DXF name: drawings tell them apart by the class name.
const ClassRow kObjCdbRecordRow = {L"ORV_CObjCdbRecord", L"AcDbObject", 21, 126, 0,
                                   L"ORV_CDBRECORD",     kLoader};
const ClassRow kCdbRecordRow = {L"ORV_CdbRecord", L"AcDbObject", 21, 126, 0, L"ORV_CDBRECORD", kLoader};

const RegisteredClass kRegisteredClasses[] = {
    {&kObjCdbRecordRow, &ORV_CObjCdbRecord::rxInit},
    {&kCdbRecordRow, &ORV_CdbRecord::rxInit},
};
const int kRegisteredClassCount = static_cast<int>(sizeof kRegisteredClasses / sizeof kRegisteredClasses[0]);

} // namespace orv
