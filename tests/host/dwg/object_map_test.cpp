#include "dwg/object_map.h"

#include "dwg/crc16.h"
#include "dwg/file_error.h"

#include <gtest/gtest.h>

using namespace embedded::dwg;

namespace {

// A stretch of file with objects of these handles and sizes, and their map behind it.
struct SmallFile {
    Bytes bytes;
    std::size_t mapBegin = 0;

    explicit SmallFile(const std::vector<std::pair<std::uint64_t, std::size_t>>& objects) {
        bytes.assign(16, 0xEE);
        std::vector<ObjectAddress> addresses;
        for (const auto& object : objects) {
            const Bytes body(object.second, static_cast<std::uint8_t>(object.first));
            addresses.push_back({object.first, static_cast<std::uint32_t>(bytes.size())});
            ObjectSlot slot;
            slot.body = body;
            slot.sum = objectSum(body);
            appendObject(bytes, slot);
        }
        mapBegin = bytes.size();
        const Bytes map = writeObjectMap(addresses);
        bytes.insert(bytes.end(), map.begin(), map.end());
    }

    std::vector<ObjectSlot> read() const {
        return readObjectMap(bytes, ByteSpan(bytes).part(mapBegin, bytes.size() - mapBegin));
    }

    // With the sum of the first page put right again.
    void sealFirstPage() {
        const std::size_t size = bytes[mapBegin] << 8 | bytes[mapBegin + 1];
        const std::uint16_t sum = crc16(ByteSpan(bytes).part(mapBegin, size));
        bytes[mapBegin + size] = static_cast<std::uint8_t>(sum >> 8);
        bytes[mapBegin + size + 1] = static_cast<std::uint8_t>(sum);
    }
};

std::string refusal(const SmallFile& file) {
    try {
        file.read();
    } catch (const FileError& error) {
        return error.what();
    }
    return "none";
}

} // namespace

TEST(ObjectMap, TellsEveryObjectWithItsBytes) {
    const SmallFile file({{1, 5}, {2, 40000}, {0x1234, 7}, {0x500000000, 1}});
    const std::vector<ObjectSlot> slots = file.read();
    ASSERT_EQ(slots.size(), 4u);
    EXPECT_EQ(slots[1].handle, 2u);
    EXPECT_EQ(slots[1].body.size, 40000u);
    EXPECT_EQ(slots[1].sum, objectSum(slots[1].body));
    EXPECT_EQ(slots[3].handle, 0x500000000u);
    EXPECT_EQ(slots[2].body[6], 0x34);
}

TEST(ObjectMap, LongMapsTakeSeveralPagesThatBeginAnew) {
    std::vector<std::pair<std::uint64_t, std::size_t>> objects;
    for (std::uint64_t i = 1; i <= 3000; ++i)
        objects.push_back({i * 3, 1 + i % 50});
    const SmallFile file(objects);
    const std::vector<ObjectSlot> slots = file.read();
    ASSERT_EQ(slots.size(), objects.size());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i].handle, objects[i].first);
        EXPECT_EQ(slots[i].body.size, objects[i].second);
    }
}

TEST(ObjectMap, AnEmptyOneIsTheLastPageAlone) {
    EXPECT_EQ(writeObjectMap({}), (Bytes{0x00, 0x02, 0x01, 0xD0}));
    const SmallFile file({});
    EXPECT_TRUE(file.read().empty());
}

TEST(ObjectMap, EveryPrefixIsRefused) {
    const SmallFile file({{1, 5}, {2, 6}, {9, 7}});
    for (std::size_t size = 0; file.mapBegin + size < file.bytes.size(); ++size) {
        const ByteSpan section = ByteSpan(file.bytes).part(file.mapBegin, size);
        EXPECT_THROW(readObjectMap(file.bytes, section), FileError) << size;
    }
}

TEST(ObjectMap, EverySingleDamagedBitIsRefused) {
    const SmallFile whole({{1, 5}, {2, 6}, {9, 7}});
    for (std::size_t bit = whole.mapBegin * 8; bit < whole.bytes.size() * 8; ++bit) {
        SmallFile file = whole;
        file.bytes[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        EXPECT_THROW(file.read(), FileError) << bit;
    }
}

TEST(ObjectMap, PlacesOutsideTheFileAreRefused) {
    SmallFile file({{1, 5}});
    file.bytes[file.mapBegin + 3] = 0x41; // place -1
    file.sealFirstPage();
    EXPECT_EQ(refusal(file), "damaged drawing: the place of object 1 is outside the file");
}

TEST(ObjectMap, SizesThatLeadOutsideTheFileAreRefused) {
    SmallFile file({{1, 5}});
    file.bytes[16] = 0xFF;
    file.bytes[17] = 0x7F;
    EXPECT_EQ(refusal(file), "damaged drawing: the size of object 1 leads outside the file");
}

TEST(ObjectMap, HandlesThatDoNotAscendAreRefused) {
    SmallFile file({{5, 5}, {6, 6}});
    file.bytes[file.mapBegin + 4] = 0; // a step of 0: the same handle twice
    file.sealFirstPage();
    EXPECT_EQ(refusal(file), "damaged drawing: the object map's handles do not ascend at 5");
}

TEST(ObjectMap, ObjectsThatShareBytesAreRefused) {
    SmallFile file({{5, 5}, {6, 6}});
    file.bytes[file.mapBegin + 5] = 0; // no move: the place of the first
    file.sealFirstPage();
    EXPECT_EQ(refusal(file), "damaged drawing: objects 5 and 6 overlap");
}
