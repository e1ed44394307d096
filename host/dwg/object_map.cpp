#include "dwg/object_map.h"

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/crc16.h"
#include "dwg/file_error.h"
#include "dwg/raw_fields.h"

#include <algorithm>

namespace embedded::dwg {
namespace {

// A page counts its own two size bytes, not its check sum. Products stop here, a little below 2 KiB.
const std::size_t kLargestPage = 2034;

std::uint16_t bigEndianShortAt(ByteSpan bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] << 8 | bytes[offset + 1]);
}

ObjectSlot slotAt(ByteSpan file, std::uint64_t handle, std::int64_t offset) {
    const std::string name = "object " + hexText(handle);
    if (offset < 0 || !file.holds(static_cast<std::uint64_t>(offset), 2))
        throwDamaged("the place of " + name + " is outside the file");
    BitReader reader(file, static_cast<std::size_t>(offset) * 8, file.size * 8);
    const std::uint32_t size = reader.modularShort();
    const std::size_t begin = reader.position() / 8;
    if (!reader.ok() || size == 0 || !file.holds(begin, std::uint64_t{size} + 2))
        throwDamaged("the size of " + name + " leads outside the file");
    ObjectSlot slot;
    slot.handle = handle;
    slot.offset = static_cast<std::uint32_t>(offset);
    slot.body = file.part(begin, size);
    slot.sum = shortAt(file, begin + size);
    return slot;
}

void readPage(ByteSpan file, ByteSpan page, std::vector<ObjectSlot>& slots) {
    std::uint64_t handle = 0;
    std::int64_t offset = 0;
    BitReader reader(page);
    while (reader.left() > 0) {
        const std::uint64_t step = reader.modularChar();
        const std::int64_t move = reader.signedModularChar();
        if (!reader.ok() || step > ~handle)
            throwDamaged("the object map is cut off inside an entry");
        handle += step;
        // Both are below 2^55, and a place outside the file ends the walk: no overflow.
        offset += move;
        if (handle == 0 || (!slots.empty() && handle <= slots.back().handle))
            throwDamaged("the object map's handles do not ascend at " + hexText(handle));
        slots.push_back(slotAt(file, handle, offset));
    }
}

// Else a small file could name one big object a thousand times, and a save would write it as often.
void refuseOverlap(ByteSpan file, const std::vector<ObjectSlot>& slots) {
    std::vector<const ObjectSlot*> byPlace;
    byPlace.reserve(slots.size());
    for (const ObjectSlot& slot : slots)
        byPlace.push_back(&slot);
    std::sort(byPlace.begin(), byPlace.end(),
              [](const ObjectSlot* a, const ObjectSlot* b) { return a->offset < b->offset; });
    for (std::size_t i = 1; i < byPlace.size(); ++i) {
        const ObjectSlot& before = *byPlace[i - 1];
        if (before.body.end() + sizeof before.sum > file.begin() + byPlace[i]->offset)
            throwDamaged("objects " + hexText(before.handle) + " and " + hexText(byPlace[i]->handle) +
                         " overlap");
    }
}

} // namespace

std::vector<ObjectSlot> readObjectMap(ByteSpan file, ByteSpan section) {
    std::vector<ObjectSlot> slots;
    for (std::size_t at = 0;;) {
        if (!section.holds(at, 2))
            throwDamaged("the object map has no last page");
        const std::size_t size = bigEndianShortAt(section, at);
        if (size < 2 || !section.holds(at, size + 2))
            throwDamaged("a page of the object map is longer than the map");
        if (crc16(section.part(at, size)) != bigEndianShortAt(section, at + size))
            throwDamaged("wrong check sum in the object map");
        if (size == 2)
            break;
        readPage(file, section.part(at + 2, size - 2), slots);
        at += size + 2;
    }
    refuseOverlap(file, slots);
    return slots;
}

namespace {

void appendPage(Bytes& map, const Bytes& entries) {
    const std::size_t begin = map.size();
    const std::size_t size = entries.size() + 2;
    map.push_back(static_cast<std::uint8_t>(size >> 8));
    map.push_back(static_cast<std::uint8_t>(size));
    append(map, entries);
    const std::uint16_t sum = crc16(ByteSpan(map).part(begin, size));
    map.push_back(static_cast<std::uint8_t>(sum >> 8));
    map.push_back(static_cast<std::uint8_t>(sum));
}

Bytes writeEntry(const ObjectAddress& object, const ObjectAddress& last) {
    BitWriter entry;
    entry.modularChar(object.handle - last.handle);
    entry.signedModularChar(static_cast<std::int64_t>(object.address) - last.address);
    return entry.takeBytes();
}

} // namespace

Bytes writeObjectMap(const std::vector<ObjectAddress>& objects) {
    Bytes map;
    Bytes page;
    ObjectAddress last{0, 0};
    for (const ObjectAddress& object : objects) {
        Bytes entry = writeEntry(object, last);
        if (2 + page.size() + entry.size() > kLargestPage) {
            appendPage(map, page);
            page.clear();
            entry = writeEntry(object, {0, 0});
        }
        append(page, entry);
        last = object;
    }
    if (!page.empty())
        appendPage(map, page);
    appendPage(map, {});
    return map;
}

namespace {

Bytes filedSize(ByteSpan body) {
    BitWriter size;
    size.modularShort(static_cast<std::uint32_t>(body.size));
    return size.takeBytes();
}

} // namespace

std::uint16_t objectSum(ByteSpan body) { return crc16(body, crc16(filedSize(body))); }

void appendObject(Bytes& file, const ObjectSlot& object) {
    append(file, filedSize(object.body));
    append(file, object.body);
    appendShort(file, object.sum);
}

} // namespace embedded::dwg
