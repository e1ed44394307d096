#include "cli/program/modules.h"

#include "embedded/linker.h"
#include "platform/text.h"
#include "rxdlinkr.h"

namespace taldork::cli {

namespace {

constexpr const wchar_t* objectModule = L"taldork191_x64.dbx";
constexpr const wchar_t* commandModule = L"taldork.arx";

std::string& loadFailure() {
    static std::string failure;
    return failure;
}

} // namespace

CommandModule* loadCommandModule() {
    AcRxDynamicLinker* linker = acrxDynamicLinker;
    for (const wchar_t* name : {objectModule, commandModule}) {
        if (!linker->loadModule(name, false)) {
            loadFailure() = platform::toUtf8(embedded::rx::lastLinkerFailure());
            return nullptr;
        }
    }
    return dynamic_cast<CommandModule*>(acrxSysRegistry()->at(commandsEntry));
}

std::string moduleAwayText() { return "needs the module, which did not load: " + loadFailure(); }

} // namespace taldork::cli
