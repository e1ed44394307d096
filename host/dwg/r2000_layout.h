#pragma once

#include <cstddef>
#include <cstdint>

// Where things stand in a file of version 2000. See docs/drawing-file.md for the picture.
namespace embedded::dwg::r2000 {

const std::size_t kMaintenanceAt = 0x0B;
const std::size_t kMaintenanceMarkAt = 0x0C;
const std::size_t kPreviewAddressAt = 0x0D;
const std::size_t kWriterVersionAt = 0x11;
const std::size_t kWriterMaintenanceAt = 0x12;
const std::size_t kCodePageAt = 0x13;
const std::size_t kLocatorCountAt = 0x15;
const std::size_t kLocatorsAt = 0x19;
const std::size_t kLocatorSize = 9;
// More than any product writes.
const std::uint32_t kMostLocators = 64;

enum Section : std::uint8_t {
    kVariables = 0,
    kClasses = 1,
    kObjectMap = 2,
    kFreeSpace = 3,
    kTemplate = 4,
    kAuxiliaryHeader = 5,
    kFirstOther = 6
};

// Sentinel and size in front of the data of a framed section; check sum and sentinel behind.
const std::size_t kFrameFront = 16 + 4;
const std::size_t kFrameBack = 2 + 16;

// Stands in front of the first object.
const std::uint32_t kObjectsMark = 0x0DCA;

// The next free handle in the auxiliary header.
const std::size_t kAuxiliarySeedAt = 79;
// The address of the first object in the free space section, when that has one.
const std::size_t kFreeSpaceObjectsAt = 16;

} // namespace embedded::dwg::r2000
