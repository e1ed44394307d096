#pragma once

#include "cli/common/numbers.h"

#include "dbx/doc/system.h"

#include <nlohmann/json_fwd.hpp>

#include <array>
#include <optional>
#include <string>

namespace taldork::cli {

/// A structural system as it is shown, asked of the module.
struct SystemSummary {
    explicit SystemSummary(const orv::System& system);

    struct Box {
        Point min, max;
    };

    std::string kind, gravity, unit;
    int unitNumber;
    double scale;
    std::array<std::array<double, 4>, 4> transform; ///< from the drawing's axes to the store's
    Point x, y, z;                                  ///< the store's axes as the drawing sees them
    Box inStore, inDrawing;
    int nodes, highestNode;
    /// Of old drawings alone, and only until they are saved.
    std::optional<std::string> project, codeName, codeCategory;
    std::optional<int> codeNation;
    double pointSize;
    int settingsVersion;
};

/// For people: a block of lines, the first of them the name.
std::string systemText(const std::string& name, const orv::System& system);

/// The fields of one entry, behind its name. A number that is none is null.
nlohmann::ordered_json describeSystem(const orv::System& system, bool allSettings);

} // namespace taldork::cli
