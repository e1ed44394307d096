#include "dwg/container_r2000.h"

#include "dwg/crc16.h"
#include "dwg/file_error.h"
#include "dwg/object_map.h"
#include "dwg/r2000_layout.h"
#include "dwg/raw_fields.h"
#include "dwg/sentinels.h"

#include <algorithm>
#include <array>

namespace embedded::dwg {

using namespace r2000;

namespace {

const char* nameOf(std::uint8_t section) {
    static const char* const kNames[] = {"header variables", "class table", "object map",
                                         "free space",       "template",    "auxiliary header"};
    return section < kFirstOther ? kNames[section] : "an unknown section";
}

struct Locators {
    std::array<ByteSpan, kFirstOther> sections;
    std::vector<OtherSection> others;
};

Locators readLocators(ByteSpan file) {
    if (!file.holds(0, kLocatorsAt))
        throwDamaged("the file header is cut off");
    const std::uint32_t count = longAt(file, kLocatorCountAt);
    if (count <= kObjectMap || count > kMostLocators)
        throwDamaged("the file header names " + std::to_string(count) + " sections");
    const std::size_t end = kLocatorsAt + count * kLocatorSize;
    if (!standsAt(file, end + 2, kFileHeaderEnd))
        throwDamaged("the file header has no end");
    if (crc16(file.part(0, end)) != shortAt(file, end))
        throwDamaged("wrong check sum in the file header");
    Locators locators;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t at = kLocatorsAt + i * kLocatorSize;
        const std::uint8_t number = file[at];
        const std::uint32_t address = longAt(file, at + 1);
        const std::uint32_t size = longAt(file, at + 5);
        if (size == 0)
            continue;
        if (!file.holds(address, size))
            throwDamaged(std::string("the place of ") + nameOf(number) + " is outside the file");
        if (number < kFirstOther)
            locators.sections[number] = file.part(address, size);
        else
            locators.others.push_back({number, file.part(address, size)});
    }
    return locators;
}

// The data inside of a framed section.
ByteSpan unframed(ByteSpan section, const Sentinel& begin, std::uint8_t number) {
    const std::string name = nameOf(number);
    if (!standsAt(section, 0, begin) || !section.holds(0, kFrameFront))
        throwDamaged("the " + name + " section does not begin as it must");
    const std::uint32_t size = longAt(section, 16);
    if (!section.holds(kFrameFront, std::uint64_t{size} + kFrameBack))
        throwDamaged("the " + name + " section is longer than its place");
    if (crc16(section.part(16, 4 + size)) != shortAt(section, kFrameFront + size))
        throwDamaged("wrong check sum in the " + name + " section");
    if (!standsAt(section, kFrameFront + size + 2, endOf(begin)))
        throwDamaged("the " + name + " section does not end as it must");
    return section.part(kFrameFront, size);
}

// A drawing without a picture is as good: one that is not whole is left out.
ByteSpan previewAt(ByteSpan file, std::uint32_t address) {
    if (!standsAt(file, address, kPreviewBegin) || !file.holds(address, kFrameFront))
        return {};
    const std::uint64_t whole = kFrameFront + std::uint64_t{longAt(file, address + 16)} + 16;
    return file.holds(address, whole) ? file.part(address, static_cast<std::size_t>(whole)) : ByteSpan();
}

} // namespace

DrawingParts readContainerR2000(std::shared_ptr<const Bytes> bytes) {
    const ByteSpan file(*bytes);
    const Locators locators = readLocators(file);
    DrawingParts parts;
    parts.file = std::move(bytes);
    parts.maintenance = file[kMaintenanceAt];
    parts.maintenanceMark = file[kMaintenanceMarkAt];
    parts.writerVersion = file[kWriterVersionAt];
    parts.writerMaintenance = file[kWriterMaintenanceAt];
    parts.codePage = shortAt(file, kCodePageAt);
    parts.headerVariables = unframed(locators.sections[kVariables], kVariablesBegin, kVariables);
    parts.classes = unframed(locators.sections[kClasses], kClassesBegin, kClasses);
    parts.objects = readObjectMap(file, locators.sections[kObjectMap]);
    parts.previewAddress = longAt(file, kPreviewAddressAt);
    parts.preview = previewAt(file, parts.previewAddress);
    parts.auxiliaryHeader = locators.sections[kAuxiliaryHeader];
    parts.freeSpace = locators.sections[kFreeSpace];
    parts.templateData = locators.sections[kTemplate];
    parts.others = locators.others;
    parts.objectsAddress = static_cast<std::uint32_t>(file.size);
    for (const ObjectSlot& object : parts.objects)
        parts.objectsAddress = std::min(parts.objectsAddress, object.offset);
    parts.secondHeaderTrailer = secondHeaderTrailer(file, locators.sections[kObjectMap].end() - file.begin());
    return parts;
}

} // namespace embedded::dwg
