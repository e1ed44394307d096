#include "dwg/new_drawing.h"

#include "dwg/raw_fields.h"

#include <chrono>
#include <random>

namespace embedded::dwg {
namespace {

// The number by which a 2000 file names the version of the program that wrote it.
const std::uint8_t kWriterVersion = 0x17;
const std::uint8_t kMaintenance = 15;

struct JulianTime {
    std::uint32_t day;
    std::uint32_t millisecond;
};

JulianTime now() {
    const std::uint32_t dayOfEpoch = 2440588;
    const std::uint64_t perDay = 86400000;
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    const auto ms =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
    return {dayOfEpoch + static_cast<std::uint32_t>(ms / perDay), static_cast<std::uint32_t>(ms % perDay)};
}

// {8-4-4-4-12} hexadecimal digits.
std::string randomIdentifier() {
    std::random_device random;
    std::string text = "{";
    for (int length : {8, 4, 4, 4, 12}) {
        for (int i = 0; i < length; ++i)
            text.push_back("0123456789ABCDEF"[random() & 0xF]);
        text.push_back(length == 12 ? '}' : '-');
    }
    text.push_back('\0');
    return text;
}

// 123 bytes: mark, version and save counts, times, next handle. Zero where the meaning is not known and
// products write zero.
const Bytes& auxiliaryHeader() {
    static const Bytes bytes = [] {
        Bytes header(123, 0);
        const std::uint8_t front[] = {0xFF, 0x77, 0x01, kWriterVersion, 0,    0, 0, 1, 0, 0,
                                      0,    0xFF, 0xFF, 0xFF,           0xFF, 1, 0, 0, 0, 0,
                                      0,    0,    0};
        std::copy(std::begin(front), std::end(front), header.begin());
        const std::uint8_t versions[] = {0x16, 0, 0x2E, 0, 0x16, 0, 0x2E, 0, 4, 0, 0x65, 5};
        std::copy(std::begin(versions), std::end(versions), header.begin() + sizeof front);
        header[41] = 1; // stands in all products' files
        const JulianTime time = now();
        putLong(header, 63, time.day);
        putLong(header, 67, time.millisecond);
        putLong(header, 71, time.day);
        putLong(header, 75, time.millisecond);
        header[107] = 1;
        return header;
    }();
    return bytes;
}

// A preview with no picture in its directory.
const Bytes& preview() {
    static const Bytes bytes = [] {
        Bytes section;
        append(section, kPreviewBegin);
        appendLong(section, 1);
        section.push_back(0);
        append(section, endOf(kPreviewBegin));
        return section;
    }();
    return bytes;
}

// A template description of no characters, and English units.
const Bytes& templateData() {
    static const Bytes bytes(4, 0);
    return bytes;
}

} // namespace

DrawingParts partsOfNewDrawing() {
    DrawingParts parts;
    parts.maintenance = kMaintenance;
    parts.writerVersion = kWriterVersion;
    parts.preview = preview();
    parts.auxiliaryHeader = auxiliaryHeader();
    parts.templateData = templateData();
    return parts;
}

void fillNewVariables(HeaderVariables& variables) {
    const JulianTime time = now();
    variables.setTime("TDCREATE", time.day, time.millisecond);
    variables.setTime("TDUPDATE", time.day, time.millisecond);
    variables.setText("FINGERPRINTGUID", randomIdentifier());
    variables.setText("VERSIONGUID", randomIdentifier());
    variables.setText("MENU", std::string(".\0", 2));
    variables.setText("UNIT1NAME", std::string("m\0", 2));
}

} // namespace embedded::dwg
