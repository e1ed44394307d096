#include "dwg/drawing_reader.h"

#include "appinfo.h"
#include "dwg/container_r2000.h"
#include "dwg/file_source.h"
#include "dwg/file_version.h"
#include "dwg/root_variables.h"
#include "embedded/demand_load.h"
#include "rxclass.h"
#include "rxdict.h"

#include <algorithm>
#include <set>

namespace embedded::dwg {
namespace {

DrawingParts readContainer(std::shared_ptr<const Bytes> file) {
    switch (versionOf(*file)) {
    case FileVersion::kR2000:
        return readContainerR2000(std::move(file));
    }
    return {};
}

void makeStubs(DatabaseCore& core, const FileFrame& frame) {
    for (std::size_t i = 0; i < frame.parts.objects.size(); ++i)
        core.stubs().make(frame.parts.objects[i].handle).fileIndex = static_cast<std::uint32_t>(i);
    const std::uint64_t highest = frame.parts.objects.empty() ? 0 : frame.parts.objects.back().handle;
    core.handseed = std::max(frame.variables.handle("HANDSEED"), highest + 1);
}

// Gives each application whose classes are missing the chance to come, once.
void askForApplications(FileFrame& frame) {
    std::set<std::wstring> asked;
    const std::vector<ClassTableRow> rows = frame.classTable();
    for (const ClassTableRow& row : rows) {
        const ObjectKind* kind = frame.kinds.find(static_cast<std::uint16_t>(row.number));
        if (kind != nullptr && kind->maker == nullptr && kind->standInIsProxy &&
            asked.insert(row.applicationName).second)
            rx::demandLoad(row.applicationName, AcadApp::kOnProxyDetection);
    }
}

} // namespace

void readDrawing(DatabaseCore& core, std::shared_ptr<const Bytes> file) {
    auto frame = std::make_unique<FileFrame>(readContainer(std::move(file)));
    requireRoots(*frame);
    FileFrame& read = *frame;
    makeStubs(core, read);
    readRoots(core, read);
    core.source = std::make_unique<FileSource>(core, read);
    core.frame = std::move(frame);
    askForApplications(read);
}

} // namespace embedded::dwg
