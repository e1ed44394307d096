#pragma once

#include "cli/command.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace taldork::cli {

// One maker for each subcommand of the module; each stands in the file of its name.
std::unique_ptr<Command> makeStoreCreate();
std::unique_ptr<Command> makeRecordsList();
std::unique_ptr<Command> makeRecordsGet();
std::unique_ptr<Command> makeRecordsPut();
std::unique_ptr<Command> makeRecordsDel();
std::unique_ptr<Command> makeRecordsCopy();
std::unique_ptr<Command> makeRecordsSync();
std::unique_ptr<Command> makeDataGet();
std::unique_ptr<Command> makeDataSet();
std::unique_ptr<Command> makeSystemsList();
std::unique_ptr<Command> makeSystemsCreate();
std::unique_ptr<Command> makeSystemsSet();
std::unique_ptr<Command> makeSystemsCheck();
std::unique_ptr<Command> makeConvert();
std::unique_ptr<Command> makeElementsList();
std::unique_ptr<Command> makeElementsShow();
std::unique_ptr<Command> makeElementsNumber();
std::unique_ptr<Command> makeElementsCopy();
std::unique_ptr<Command> makeElementsEdit();
std::unique_ptr<Command> makeLoadsList();
std::unique_ptr<Command> makeLoadsExport();
std::unique_ptr<Command> makePlot();
std::unique_ptr<Command> makeSelectList();
std::unique_ptr<Command> makeSelectSet();
std::unique_ptr<Command> makeSelectDel();
std::unique_ptr<Command> makeSettingsGet();
std::unique_ptr<Command> makeSettingsSet();
std::unique_ptr<Command> makeSettingsList();
std::unique_ptr<Command> makeSettingsDelete();

/// Options that several subcommands share.
void addDrawing(CLI::App& command, std::string& file, const std::string& name = "FILE",
                const std::string& meaning = "the drawing");
void addStore(CLI::App& command, std::string& store);
CLI::Option* addJson(CLI::App& command, bool& json);
/// The option --case.
void addLoadCase(CLI::App& command, std::optional<unsigned int>& loadCase);
/// The argument NAME.
void addSystem(CLI::App& command, std::string& name);
void addSelection(CLI::App& command, std::string& name);
/// The argument NAME of a saved load.
void addSavedLoad(CLI::App& command, std::string& name);
/// The arguments HANDLE and HANDLE…
void addHandle(CLI::App& command, std::string& handle);
void addHandles(CLI::App& command, std::vector<std::string>& handles);

} // namespace taldork::cli
