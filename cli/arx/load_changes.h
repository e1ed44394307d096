#pragma once

#include "dbx/elem/load_data.h"

#include <nlohmann/json_fwd.hpp>

#include <functional>
#include <string>
#include <vector>

namespace taldork::cli {

/// One KEY=VALUE of `settings set`.
struct LoadChange {
    std::string key;
    std::function<void(orv::elem::LoadData& data)> apply;
};

/// Throws std::invalid_argument with what is wrong with the text.
LoadChange parseLoadChange(const std::string& text);

/// Check for CLI11.
std::string checkLoadChange(const std::string& text);

/// The keys, each with what `settings set` takes for it, one line each.
std::string loadKeysHelp();

/// A load by the same keys; what it does not have is null. `distribution` is a number.
nlohmann::ordered_json jsonOfLoad(const orv::elem::LoadData& data);

/// The same values for people, as `settings set` takes them; "-" for what it does not have.
std::vector<std::pair<std::string, std::string>> textsOfLoad(const orv::elem::LoadData& data);

} // namespace taldork::cli
