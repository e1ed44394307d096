#include "dwg/container_r2000.h"

#include "dwg/crc16.h"
#include "dwg/file_error.h"
#include "dwg/object_map.h"
#include "dwg/r2000_layout.h"
#include "dwg/raw_fields.h"
#include "dwg/sentinels.h"

#include <algorithm>
#include <array>
#include <limits>

namespace embedded::dwg {

using namespace r2000;

namespace {

struct Locator {
    std::uint8_t number = 0;
    std::uint32_t address = 0;
    std::uint32_t size = 0;
};

class Writer {
public:
    Writer(const DrawingParts& parts, const std::vector<std::size_t>& order, const RootHandles& roots)
        : m_parts(parts), m_order(order), m_roots(roots), m_locators(kFirstOther + parts.others.size()) {
        for (std::size_t i = 0; i < m_locators.size(); ++i)
            m_locators[i].number = static_cast<std::uint8_t>(i);
    }

    Bytes write() {
        m_file.reserve(m_parts.file != nullptr ? m_parts.file->size() + m_parts.file->size() / 8 : 0);
        m_file.resize(kLocatorsAt + m_locators.size() * kLocatorSize + 2);
        append(m_file, kFileHeaderEnd);
        writeAuxiliaryHeader();
        writePreview();
        writeFramed(kVariables, kVariablesBegin, m_parts.headerVariables);
        writeFramed(kClasses, kClassesBegin, m_parts.classes);
        writeObjects();
        writeCarried();
        writeSecondHeader();
        // Products let the template be the last thing in a file.
        writeSection(kTemplate, m_parts.templateData);
        if (m_file.size() > std::numeric_limits<std::uint32_t>::max())
            throw FileError(FileError::kDamaged, "the drawing is too big for the format");
        writeFileHeader();
        return std::move(m_file);
    }

private:
    std::uint32_t here() const { return static_cast<std::uint32_t>(m_file.size()); }

    void writeSection(std::size_t index, ByteSpan bytes) {
        m_locators[index].address = bytes.empty() ? 0 : here();
        m_locators[index].size = static_cast<std::uint32_t>(bytes.size);
        append(m_file, bytes);
    }

    void writeAuxiliaryHeader() {
        Bytes bytes = m_parts.auxiliaryHeader.copy();
        const std::uint64_t seed = m_roots.handles[0];
        if (bytes.size() >= kAuxiliarySeedAt + 4 && seed <= std::numeric_limits<std::int32_t>::max())
            putLong(bytes, kAuxiliarySeedAt, static_cast<std::uint32_t>(seed));
        writeSection(kAuxiliaryHeader, bytes);
    }

    // The picture's directory holds places in the file.
    void writePreview() {
        Bytes bytes = m_parts.preview.copy();
        m_previewAddress = bytes.empty() ? 0 : here();
        const std::size_t count = bytes.size() > kFrameFront ? bytes[kFrameFront] : 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = kFrameFront + 1 + i * kLocatorSize + 1;
            if (at + 4 > bytes.size())
                break;
            const std::uint32_t inside = longAt(bytes, at) - m_parts.previewAddress;
            if (inside < bytes.size())
                putLong(bytes, at, m_previewAddress + inside);
        }
        append(m_file, bytes);
    }

    void writeFramed(std::size_t index, const Sentinel& begin, ByteSpan data) {
        Bytes section;
        append(section, begin);
        appendLong(section, static_cast<std::uint32_t>(data.size));
        append(section, data);
        appendShort(section, crc16(ByteSpan(section).part(16, 4 + data.size)));
        append(section, endOf(begin));
        writeSection(index, section);
    }

    void writeObjects() {
        appendLong(m_file, kObjectsMark);
        m_objectsAddress = here();
        std::vector<ObjectAddress> map(m_parts.objects.size());
        for (std::size_t index : m_order) {
            map[index] = {m_parts.objects[index].handle, here()};
            appendObject(m_file, m_parts.objects[index]);
        }
        writeSection(kObjectMap, writeObjectMap(map));
    }

    void writeCarried() {
        Bytes freeSpace = m_parts.freeSpace.copy();
        if (freeSpace.size() >= kFreeSpaceObjectsAt + 4 &&
            longAt(freeSpace, kFreeSpaceObjectsAt) == m_parts.objectsAddress)
            putLong(freeSpace, kFreeSpaceObjectsAt, m_objectsAddress);
        writeSection(kFreeSpace, freeSpace);
        for (std::size_t i = 0; i < m_parts.others.size(); ++i) {
            writeSection(kFirstOther + i, m_parts.others[i].bytes);
            m_locators[kFirstOther + i].number = m_parts.others[i].number;
        }
    }

    void writeSecondHeader() {
        SecondHeader header;
        header.address = here();
        header.maintenance = m_parts.maintenance;
        header.maintenanceMark = m_parts.maintenanceMark;
        header.writerVersion = m_parts.writerVersion;
        header.writerMaintenance = m_parts.writerMaintenance;
        header.codePage = m_parts.codePage;
        for (std::size_t i = 0; i < SecondHeader::kSections; ++i)
            header.sections[i] = {m_locators[i].number, m_locators[i].address, m_locators[i].size};
        header.handles = m_roots.handles;
        header.trailer = m_parts.secondHeaderTrailer;
        append(m_file, dwg::writeSecondHeader(header));
    }

    void writeFileHeader() {
        Bytes header = {'A', 'C', '1', '0', '1', '5', 0, 0, 0, 0, 0};
        header.push_back(m_parts.maintenance);
        header.push_back(m_parts.maintenanceMark);
        appendLong(header, m_previewAddress);
        header.push_back(m_parts.writerVersion);
        header.push_back(m_parts.writerMaintenance);
        appendShort(header, m_parts.codePage);
        appendLong(header, static_cast<std::uint32_t>(m_locators.size()));
        for (const Locator& locator : m_locators) {
            header.push_back(locator.number);
            appendLong(header, locator.address);
            appendLong(header, locator.size);
        }
        appendShort(header, crc16(header));
        std::copy(header.begin(), header.end(), m_file.begin());
    }

    const DrawingParts& m_parts;
    const std::vector<std::size_t>& m_order;
    const RootHandles& m_roots;
    Bytes m_file;
    std::vector<Locator> m_locators;
    std::uint32_t m_previewAddress = 0;
    std::uint32_t m_objectsAddress = 0;
};

} // namespace

Bytes writeContainerR2000(const DrawingParts& parts, const std::vector<std::size_t>& order,
                          const RootHandles& roots) {
    return Writer(parts, order, roots).write();
}

} // namespace embedded::dwg
