#include "dbx/doc/visual_settings.h"

#include "base/assert.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"

#include "orvshape/colours.h"

#include <cstdint>

namespace orv::settings {

namespace {

using int32 = std::int32_t;

// What a record 10/100 begins with.
constexpr int kVisId = 1;

// The step that only a full setting makes.
constexpr int kBase = 0;

enum class What { kSwitches, kColours, kSize, kSizeAndFlags };

// One default, for the numbers `first` to `last`.
struct Default {
    int step; // made when everything is set, or what is above a version that lies below it
    What what;
    int first;
    int last;
    std::uint8_t value = 0;
    ColourRGBA colour = ColourRGBA();
    size sized = size();
};

Default off(int step, int first, int last) { return {step, What::kSwitches, first, last, 0}; }
Default off(int step, int index) { return off(step, index, index); }
Default on(int step, int first, int last) { return {step, What::kSwitches, first, last, 1}; }
Default on(int step, int index) { return on(step, index, index); }
Default colour(int step, int first, int last, const ColourRGBA& value) {
    return {step, What::kColours, first, last, 0, value};
}
Default colour(int step, int index, const ColourRGBA& value) { return colour(step, index, index, value); }
// Leaves the flags.
Default sized(int step, int index, double value) {
    return {step, What::kSize, index, index, 0, {}, {0, value}};
}
Default sized(int step, int index, double value, std::uint32_t flags) {
    return {step, What::kSizeAndFlags, index, index, 0, {}, {flags, value}};
}

// In the order in which they are made, all switches being off before the base step: a later row wins, also
// inside a step. A function, since static objects of other files may build settings.
const auto& allDefaults() {
    // clang-format off
    static const Default rows[] = {
        sized(kBase, 1, 1.0, kFixedSize),
        sized(kBase, 2, 0.2), sized(kBase, 3, 0.6), sized(kBase, 4, 0.15),
        sized(kBase, 5, 0.2), sized(kBase, 6, 0.3), sized(kBase, 7, 0.2),
        on(kBase, 0, 4),
        colour(kBase, 151, 154, Colours::Red * 0.9),
        on(kBase, 21, 29),
        on(kBase, 61), on(kBase, 62), off(kBase, 63), on(kBase, 64),
        colour(kBase, 51, Colours::Blue), colour(kBase, 52, Colours::Cyan), colour(kBase, 54, Colours::Purple),
        colour(kBase, 53, Colours::Yellow), colour(kBase, 55, Colours::Green), colour(kBase, 56, Colours::Blue),
        colour(kBase, 57, 58, Colours::Red),
        on(kBase, 202),
        off(kBase, 203), off(kBase, 204), off(kBase, 205), off(kBase, 201),
        off(kBase, 209), off(kBase, 207), off(kBase, 208), off(kBase, 206),

        on(2, 105, 108),
        on(2, 103), on(2, 111),
        colour(2, 101, {0.9, 0.2, 0.2, 1.0}),
        colour(2, 102, {0.9, 0.9, 0.5, 1.0}),
        colour(2, 103, {0.0, 0.4, 0.8, 1.0}),
        on(2, 113), on(2, 114),
        colour(2, 104, {0.4980392156862745, 0.7490196078431373, 1.0, 1.0}),
        colour(2, 105, {0.6, 0.8, 0.4, 1.0}),

        colour(3, 106, {0.9, 0.9, 0.5, 1.0}),
        on(3, 202),

        on(4, 115),

        on(5, 251), on(5, 252),

        colour(6, 107, Colours::Red),
        on(6, 120),
        off(6, 151),
        off(6, 116, 119),
        off(6, 121),

        on(7, 122),
        off(7, 68), off(7, 65), off(7, 67), off(7, 69), off(7, 66),
        on(7, 5),

        sized(8, 101, 0.1),
        on(8, 6), on(8, 151),

        on(9, 123),
        off(9, 124),

        off(10, 125),

        colour(11, 59, Colours::Red),
        on(11, 30), on(11, 7),
        sized(11, 151, 3.0, kFixedSize), sized(11, 152, 5.0, kFixedSize), sized(11, 153, 9.0, kFixedSize),
        sized(11, 154, 10.0, kFixedSize), sized(11, 155, 5.0, kFixedSize),
        colour(11, 108, Colours::Red),
        off(11, 126),

        on(12, 270), on(12, 271),
        colour(12, 251, {0.6, 0.6, 1.0, 1.0}),
        on(12, 272),
        colour(12, 252, Colours::Yellow),
        colour(12, 253, {0.25, 0.25, 0.4, 1.0}),

        off(13, 210),
        on(13, 211),

        sized(14, 8, 0.2, 0),
        colour(14, 1, Colours::Red), colour(14, 2, Colours::Red),

        off(15, 127), off(15, 128),
    };
    // clang-format on
    return rows;
}

void setDefault(Settings& settings, const Default& row) {
    switch (row.what) {
    case What::kSwitches:
        settings.setSwitchRange(row.first, row.last, row.value);
        break;
    case What::kColours:
        for (int index = row.first; index <= row.last; ++index)
            settings.setColour(index, row.colour);
        break;
    case What::kSize:
        settings.setSize(row.first, row.sized.value);
        break;
    case What::kSizeAndFlags:
        settings.setSize(row.first, row.sized);
        break;
    }
}

// A part outside 0 to 1 ends up at the nearer end, and one that is no number at 0.
unsigned int byteOf(double part) {
    if (!(part > 0.0))
        return 0;
    return part < 1.0 ? static_cast<unsigned int>(part * 255.0) : 255;
}

unsigned int packed(const ColourRGBA& colour) {
    return byteOf(colour.red) << 24 | byteOf(colour.green) << 16 | byteOf(colour.blue) << 8 |
           byteOf(colour.alpha);
}

ColourRGBA unpacked(unsigned int filed) {
    const auto part = [filed](int shift) { return (filed >> shift & 0xFF) / 255.0; };
    return {part(24), part(16), part(8), part(0)};
}

// Here and below, entries beyond the table are read and dropped, so that a damaged count makes one report and
// not one per entry.
void readColours(serialization::IInArchive& archive, Settings& settings) {
    int32 count = 0;
    archive >> count;
    ORV_ASSERT(count <= settings.numColours())(settings.numColours())(count);
    for (int32 index = 0; index < count; ++index) {
        unsigned int filed = 0;
        archive >> filed;
        if (index < settings.numColours())
            settings.setColour(index, unpacked(filed));
    }
}

void readSizes(serialization::IInArchive& archive, Settings& settings) {
    int32 count = 0;
    archive >> count;
    ORV_ASSERT(count <= settings.numSizes())(settings.numSizes())(count);
    for (int32 index = 0; index < count; ++index) {
        float value = 0.0f;
        unsigned int flags = 0;
        archive >> value >> flags;
        if (index < settings.numSizes()) {
            settings.setSize(index, static_cast<double>(value));
            settings.setSizeFlags(index, flags);
        }
    }
}

void readSwitches(serialization::IInArchive& archive, Settings& settings) {
    int32 count = 0;
    archive >> count;
    ORV_ASSERT(count <= settings.numSwitches())(settings.numSwitches())(count);
    for (int32 index = 0; index < count; ++index) {
        unsigned char value = 0;
        archive >> value;
        if (index < settings.numSwitches())
            settings.setSwitch(index, value);
    }
}

} // namespace

void applyVisDefaults(Settings& settings, int version, bool full) {
    if (full)
        settings.setSwitchRange(0, settings.maxSwitchIndex(), 0);
    for (const Default& row : allDefaults())
        if (full || (row.step != kBase && version < row.step))
            setDefault(settings, row);
    settings.scaleBy(settings.getSize(1));
}

int readVis(serialization::IInArchive& archive, Settings& settings) {
    int32 id = 0;
    archive >> id;
    ORV_ASSERT(id == 1)(id);
    if (id != kVisId)
        return 0;
    int32 version = 0;
    archive >> version;
    ORV_ASSERT(version <= static_cast<int32>(settings.getVersion()))(settings.getVersion())(version);
    if (version > settings.getVersion())
        return version;
    readColours(archive, settings);
    readSizes(archive, settings);
    readSwitches(archive, settings);
    return version;
}

void writeVis(serialization::IOutArchive& archive, const Settings& settings) {
    archive << kVisId << settings.getVersion();
    archive << settings.numColours();
    for (int index = 0; index < settings.numColours(); ++index)
        archive << packed(settings.getColour(index));
    archive << settings.numSizes();
    for (int index = 0; index < settings.numSizes(); ++index) {
        const size raw = settings.getRawSize(index);
        archive << static_cast<float>(raw.value) << static_cast<unsigned int>(raw.flags);
    }
    archive << settings.numSwitches();
    for (int index = 0; index < settings.numSwitches(); ++index)
        archive << static_cast<unsigned char>(settings.getSwitch(index));
}

} // namespace orv::settings
