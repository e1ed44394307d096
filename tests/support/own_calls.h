#pragma once

#include "dbmain.h"
#include "support/recording_filer.h"

#include <string>
#include <vector>

namespace testing_support {

// How many calls AcDbObject makes before a class behind it files anything of its own.
inline int baseWrites(AcDb::FilerType type) {
    struct Plain : AcDbObject {};
    RecordingFiler base;
    base.type = type;
    Plain().dwgOutFields(&base);
    return static_cast<int>(base.calls.size());
}
inline int baseReads(AcDb::FilerType type) {
    struct Plain : AcDbObject {};
    RecordingFiler base;
    base.type = type;
    Plain().dwgInFields(&base);
    return static_cast<int>(base.calls.size());
}

// All that a class files or reads behind its base.
inline std::vector<std::string> ownCalls(const RecordingFiler& filer) {
    return {filer.calls.begin() + baseWrites(filer.type), filer.calls.end()};
}
inline std::vector<std::string> ownReads(const RecordingFiler& filer) {
    return {filer.calls.begin() + baseReads(filer.type), filer.calls.end()};
}

} // namespace testing_support
