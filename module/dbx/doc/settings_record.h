#pragma once

#include <cstddef>
#include <cstdint>

namespace orv {

// The record 10/101 of a store. The two numbers belong to the analysis programs and are only carried.
struct SettingsRecord {
    std::int32_t first = 10;
    std::int32_t second = 1;
    double pointSize = 0.01;
};

static_assert(sizeof(SettingsRecord) == 16, "size of the record");
static_assert(offsetof(SettingsRecord, second) == 4, "");
static_assert(offsetof(SettingsRecord, pointSize) == 8, "");

} // namespace orv
