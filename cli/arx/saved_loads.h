#pragma once

#include "dbx/elem/load_data.h"

#include <string>
#include <vector>

namespace taldork::cli {

// The loads that the user keeps in the settings: records of orv::elem::LoadData in nodes below one key of the
// user's registry. A node's name is UTF-8 here; upper and lower case do not count.

/// What is wrong with a node's name; empty if nothing is. Check for CLI11.
std::string checkLoadName(const std::string& name);

/// What is wrong with a text that a record is to keep; empty if nothing is.
std::string checkKeptText(const std::string& text);

/// In the order of the registry, as they were first written. Throws Failure if the registry cannot be read.
std::vector<std::string> savedLoadNames();

/// True if there is a node of that name.
bool isSavedLoad(const std::string& name);

/// All three throw Failure about the name: if there is none, or if the registry refuses.
orv::elem::LoadData readSavedLoad(const std::string& name);
void writeSavedLoad(const std::string& name, const orv::elem::LoadData& data);
void deleteSavedLoad(const std::string& name);

} // namespace taldork::cli
