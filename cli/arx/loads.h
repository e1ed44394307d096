#pragma once

#include "cli/arx/elements.h"

#include "dbx/elem/load_vertex.h"

#include <nlohmann/json_fwd.hpp>

#include <deque>
#include <functional>
#include <optional>
#include <set>

namespace orv::elem {
struct GenericLoad;
class LoadBase;
} // namespace orv::elem

namespace taldork::cli {

/// How an element is a load.
enum class LoadForm { kFree, kElement, kPlugin, kEntity };

/// One load of a drawing, open for read: a plugin of an element, or an element that is a load by itself and
/// has no such plugin.
struct FoundLoad {
    const FoundElement& found;
    orv::elem::GenericLoad* plugin = nullptr;
    const orv::elem::LoadBase* entity = nullptr; ///< counts without a plugin

    const std::set<unsigned int>& cases() const;
    const std::deque<orv::elem::LoadVertex>& vertices() const;
    int distribution() const;
    int type() const;
    LoadForm form() const;

    /// Line and area loads of plugins as the module samples them for others; all other loads by the vertices
    /// that they have.
    std::deque<orv::elem::LoadVertex> points() const;
};

/// Calls `visit` for each load of a drawing by ascending handle, of all load cases or of one. The number of
/// elements whose code is not there, which may be loads.
std::size_t forEachLoad(const Drawing& drawing, std::optional<unsigned int> loadCase,
                        const std::function<void(const FoundLoad&)>& visit);

/// A row of the listing: handle, class, number, name, label, form ("free", "element", "plugin", "entity"),
/// type, direction (in words), kind, category, distribution, shape (how the values run between the vertices,
/// in the words in which the element tells it), cases, values, element (handle) and reference (type, numbers,
/// projection, depth, nature). What a load does not have is null.
nlohmann::ordered_json describeLoad(const FoundLoad& load);

/// "point", "line", "area", "volume", or the number.
std::string distributionText(int distribution);
/// "3 elements without the code of a class, which may be loads".
std::string unknownText(std::size_t count);
/// Numbers with a separator between each two.
std::string casesText(const std::set<unsigned int>& cases, const char* separator);

} // namespace taldork::cli
