#pragma once

#include "orvcheck/report.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace taldork::cli {

/// Something that went wrong while the systems of a drawing were read.
struct SystemComplaint {
    std::optional<std::string> store;               ///< UTF-8; none for what concerns the drawing as a whole
    std::optional<orv::smartassert::Report> report; ///< none for an exception
    std::string exception;                          ///< what it says, UTF-8
};

/// The complaints of a drawing, and how many stores were read for them.
struct SystemComplaints {
    std::vector<SystemComplaint> list;
    std::size_t stores = 0;
};

/// Reads every system of a drawing that nobody has looked into yet, since an object that is damaged complains
/// when it is first opened and not again. An exception ends the reading of its store alone. Who took the
/// module's reports before hears them too.
SystemComplaints readSystems(AcDbDatabase& database);

} // namespace taldork::cli
