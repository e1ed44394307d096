#include "dwg/container_r2000.h"

#include "drawing_files.h"
#include "dwg/file_error.h"
#include "dwg/header_variables.h"
#include "dwg/root_variables.h"

#include <algorithm>
#include <random>

using namespace embedded::dwg;

namespace {

std::shared_ptr<const Bytes> shared(Bytes bytes) { return std::make_shared<const Bytes>(std::move(bytes)); }

std::vector<std::size_t> orderOf(const DrawingParts& parts) {
    std::vector<std::size_t> order(parts.objects.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return parts.objects[a].offset < parts.objects[b].offset;
    });
    return order;
}

Bytes rewritten(const DrawingParts& parts) {
    return writeContainerR2000(parts, orderOf(parts),
                               rootHandles(HeaderVariables::read(parts.headerVariables)));
}

bool opens(Bytes bytes) {
    try {
        readContainerR2000(shared(std::move(bytes)));
        return true;
    } catch (const FileError& error) {
        EXPECT_EQ(error.kind(), FileError::kDamaged);
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        return false;
    }
}

class RealContainer : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(RealContainer, IsWrittenByteForByteAsItWasRead) {
    NEED_DRAWING(GetParam());
    const Bytes file = bytesOfFile(drawingFile(GetParam()));
    const DrawingParts parts = readContainerR2000(shared(file));
    EXPECT_TRUE(rewritten(parts) == file);
}

TEST_P(RealContainer, ItsObjectsAreThoseOfAnIndependentWalk) {
    NEED_DRAWING(GetParam());
    const Bytes file = bytesOfFile(drawingFile(GetParam()));
    const DrawingParts parts = readContainerR2000(shared(file));
    const auto objects = objectsOf(file);
    ASSERT_EQ(parts.objects.size(), objects.size());
    for (const ObjectSlot& slot : parts.objects)
        EXPECT_TRUE(std::string(slot.body.begin(), slot.body.end()) == objects.at(slot.handle))
            << slot.handle;
}

TEST_P(RealContainer, ItsHeaderVariablesComeBackBitByBit) {
    NEED_DRAWING(GetParam());
    const DrawingParts parts = readContainerR2000(shared(bytesOfFile(drawingFile(GetParam()))));
    EXPECT_TRUE(HeaderVariables::read(parts.headerVariables).write() == parts.headerVariables.copy());
}

TEST_P(RealContainer, APreviewThatMovesKeepsItsPicture) {
    NEED_DRAWING(GetParam());
    DrawingParts parts = readContainerR2000(shared(bytesOfFile(drawingFile(GetParam()))));
    const Bytes longer(parts.auxiliaryHeader.size + 37, 0);
    parts.auxiliaryHeader = longer;
    const DrawingParts again = readContainerR2000(shared(rewritten(parts)));
    EXPECT_EQ(again.previewAddress, parts.previewAddress + 37);
    ASSERT_EQ(again.preview.size, parts.preview.size);
    // The picture's own place is told in the directory behind sentinel, size and count.
    EXPECT_EQ(again.preview[22] | again.preview[23] << 8, (parts.preview[22] | parts.preview[23] << 8) + 37);
}

TEST_P(RealContainer, CutOffAnywhereItIsRefusedInOneLine) {
    NEED_DRAWING(GetParam());
    const Bytes file = bytesOfFile(drawingFile(GetParam()));
    for (std::size_t size = 0; size < file.size(); size += 512)
        opens(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
    // The map of the objects stands behind them: without it nothing opens.
    EXPECT_FALSE(opens(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(file.size() / 2))));
}

INSTANTIATE_TEST_SUITE_P(Drawings, RealContainer,
                         testing::Values("small_AC1015.dwg", "leader_AC1015.dwg", "sample_AC1015.dwg"));

TEST(Container, AWrongCheckSumIsToldBySection) {
    NEED_DRAWING("small_AC1015.dwg");
    const Bytes file = bytesOfFile(drawingFile("small_AC1015.dwg"));
    const struct {
        std::size_t place;
        const char* text;
    } rows[] = {
        {0x0B, "damaged drawing: wrong check sum in the file header"},
        {0x436B + 100, "damaged drawing: wrong check sum in the header variables section"},
        {0x4575 + 100, "damaged drawing: wrong check sum in the class table section"},
        {0x54C9 + 100, "damaged drawing: wrong check sum in the object map"},
        {0x436B, "damaged drawing: the header variables section does not begin as it must"},
    };
    for (const auto& row : rows) {
        Bytes damaged = file;
        damaged[row.place] ^= 0x10;
        try {
            readContainerR2000(shared(damaged));
            ADD_FAILURE() << row.text;
        } catch (const FileError& error) {
            EXPECT_STREQ(error.what(), row.text);
        }
    }
}

TEST(Container, ADamagedObjectLeavesTheOthersAndKeepsItsSum) {
    NEED_DRAWING("small_AC1015.dwg");
    Bytes file = bytesOfFile(drawingFile("small_AC1015.dwg"));
    file[0x467E + 20] ^= 1;
    const DrawingParts parts = readContainerR2000(shared(file));
    EXPECT_EQ(parts.objects.size(), 61u);
    EXPECT_TRUE(rewritten(parts) == file);
}

TEST(Container, SectionsThatAreNotKnownAreCarried) {
    NEED_DRAWING("small_AC1015.dwg");
    DrawingParts parts = readContainerR2000(shared(bytesOfFile(drawingFile("small_AC1015.dwg"))));
    const Bytes freeSpace(53, 3), unknown(17, 4);
    parts.freeSpace = freeSpace;
    parts.others.push_back({7, unknown});
    const DrawingParts again = readContainerR2000(shared(rewritten(parts)));
    EXPECT_EQ(again.freeSpace.copy(), freeSpace);
    ASSERT_EQ(again.others.size(), 1u);
    EXPECT_EQ(again.others[0].number, 7);
    EXPECT_EQ(again.others[0].bytes.copy(), unknown);
}

TEST(Container, RandomBytesBehindTheMarkAreRefused) {
    std::mt19937 random(15);
    for (int round = 0; round < 2000; ++round) {
        Bytes bytes = {'A', 'C', '1', '0', '1', '5'};
        for (std::size_t i = random() % 300; i > 0; --i)
            bytes.push_back(static_cast<std::uint8_t>(random()));
        EXPECT_FALSE(opens(std::move(bytes)));
    }
}
