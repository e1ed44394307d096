#pragma once

#include "acadstrc.h"
#include "adesk.h"

namespace AcDb {

// How an object is opened.
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

// What a filer is used for. An object may file differently to each.
enum FilerType {
    kFileFiler = 0,
    kCopyFiler = 1,
    kUndoFiler = 2,
    kBagFiler = 3,
    kIdXlateFiler = 4,
    kPageFiler = 5,
    kDeepCloneFiler = 6,
    kIdFiler = 7,
    kPurgeFiler = 8,
    kWblockCloneFiler = 9
};

// From where FilerSeek offsets count.
enum FilerSeekType { kSeekFromStart = 0, kSeekFromCurrent = 1, kSeekFromEnd = 2 };

enum DuplicateRecordCloning {
    kDrcNotApplicable = 0,
    kDrcIgnore = 1,
    kDrcReplace = 2,
    kDrcXrefMangleName = 3,
    kDrcMangleName = 4,
    kDrcUnmangleName = 5
};

enum Visibility { kInvisible = 1, kVisible = 0 };

enum LineWeight {
    kLnWt000 = 0,
    kLnWt005 = 5,
    kLnWt009 = 9,
    kLnWt013 = 13,
    kLnWt015 = 15,
    kLnWt018 = 18,
    kLnWt020 = 20,
    kLnWt025 = 25,
    kLnWt030 = 30,
    kLnWt035 = 35,
    kLnWt040 = 40,
    kLnWt050 = 50,
    kLnWt053 = 53,
    kLnWt060 = 60,
    kLnWt070 = 70,
    kLnWt080 = 80,
    kLnWt090 = 90,
    kLnWt100 = 100,
    kLnWt106 = 106,
    kLnWt120 = 120,
    kLnWt140 = 140,
    kLnWt158 = 158,
    kLnWt200 = 200,
    kLnWt211 = 211,
    kLnWtByLayer = -1,
    kLnWtByBlock = -2,
    kLnWtByLwDefault = -3
};

// The drawing file's versions, as far as they are named here. The number is the one that class registration
// takes.
enum AcDbDwgVersion {
    kDHL_1012 = 19,
    kDHL_1013 = 20,
    kDHL_1014 = 21,
    kDHL_1500 = 22,
    kDHL_1015 = 23,
    kDHL_1800a = 24,
    kDHL_1800 = 25,
    kDHL_2100a = 26,
    kDHL_2100 = 27,
    kDHL_2400a = 28,
    kDHL_2400 = 29,
    kDHL_2700a = 30,
    kDHL_1027 = 31,
    kDHL_CURRENT = 31,
    kDHL_Unknown = 254
};

enum MaintenanceReleaseVersion { kMRelease0 = 0, kMReleaseCurrent = 7 };

} // namespace AcDb
