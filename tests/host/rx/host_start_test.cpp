#include "embedded/host_start.h"

#include "embedded/classes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string g_order;

const embedded::RoomInitialiser g_late(900, [] { g_order += "late "; });
const embedded::RoomInitialiser g_early(800, [] { g_order += "early "; });

TEST(HostStart, RoomsComeUpOnceAndInOrder) {
    embedded::startHost();
    EXPECT_TRUE(embedded::hostIsStarted());
    EXPECT_EQ(g_order, "early late ");
    const unsigned builds = embedded::rx::hierarchyBuilds();
    EXPECT_GE(builds, 1u);
    embedded::startHost();
    EXPECT_EQ(g_order, "early late ");
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), builds);
    const embedded::RoomInitialiser afterwards(1, [] { g_order += "afterwards "; });
    EXPECT_EQ(g_order, "early late afterwards ");
}

} // namespace
