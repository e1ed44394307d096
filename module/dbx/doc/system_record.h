#pragma once

#include <cstddef>
#include <cstdint>

namespace orv {

// The record 10/0 of a store, as analysis programs write it: what a structural system is. Numbers stand with
// the little end first.
struct tagCDB_SYST {
    // The store's axes in terms of the drawing.
    struct Axes {
        float origin[3];
        float x[3];
        float y[3];
        float z[3];
    };

    std::int32_t iprob; // kind of system
    std::int32_t iachs; // gravity axis with its sign, 1 to 3; 0 for none
    union {
        std::int32_t sys_numkn; // number of nodes
        std::int32_t sys_anzkn;
    };
    std::int32_t sys_maxkn; // highest node number
    std::int32_t igdiv;
    std::int32_t igres; // mask of the kind of system
    float box_min[3];   // in store coordinates, as the next
    float box_max[3];
    Axes m_tg;
    unsigned char rest[256]; // of the analysis programs
};
using typeCDB_SYST = tagCDB_SYST;

static_assert(sizeof(typeCDB_SYST) == 352, "size of the record");
static_assert(offsetof(typeCDB_SYST, iprob) == 0, "");
static_assert(offsetof(typeCDB_SYST, iachs) == 4, "");
static_assert(offsetof(typeCDB_SYST, sys_numkn) == 8, "");
static_assert(offsetof(typeCDB_SYST, sys_anzkn) == 8, "");
static_assert(offsetof(typeCDB_SYST, sys_maxkn) == 12, "");
static_assert(offsetof(typeCDB_SYST, igdiv) == 16, "");
static_assert(offsetof(typeCDB_SYST, igres) == 20, "");
static_assert(offsetof(typeCDB_SYST, box_min) == 24, "");
static_assert(offsetof(typeCDB_SYST, box_max) == 36, "");
static_assert(offsetof(typeCDB_SYST, m_tg) == 48, "");
static_assert(offsetof(typeCDB_SYST, rest) == 96, "");
static_assert(sizeof(typeCDB_SYST::Axes) == 48, "");

} // namespace orv
