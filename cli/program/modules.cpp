#include "cli/program/modules.h"

#include "embedded/linker.h"
#include "platform/text.h"
#include "rxdlinkr.h"

namespace taldork::cli {

namespace {

constexpr const wchar_t* objectModule = L"taldork191_x64.dbx";
constexpr const wchar_t* commandModule = L"taldork.arx";
constexpr const wchar_t* exampleModule = L"structure.arx";

/// Why a module did not load; empty while it has.
std::string moduleFailure, exampleFailure;

bool load(const wchar_t* name, std::string& failure) {
    AcRxDynamicLinker* linker = acrxDynamicLinker;
    if (linker->loadModule(name, false))
        return true;
    failure = platform::toUtf8(embedded::rx::lastLinkerFailure());
    return false;
}

} // namespace

CommandModule* loadCommandModule() {
    for (const wchar_t* name : {objectModule, commandModule})
        if (!load(name, moduleFailure))
            return nullptr;
    return dynamic_cast<CommandModule*>(acrxSysRegistry()->at(commandsEntry));
}

std::string moduleAwayText() { return "needs the module, which did not load: " + moduleFailure; }

CommandSet* loadExampleCommands() {
    if (!load(exampleModule, exampleFailure))
        return nullptr;
    return dynamic_cast<CommandSet*>(acrxSysRegistry()->at(exampleCommandsEntry));
}

std::string exampleAwayText() {
    return "needs the example's module " + platform::toUtf8(exampleModule) +
           ", which did not load: " + exampleFailure;
}

} // namespace taldork::cli
