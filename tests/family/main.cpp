#include "embedded/host_start.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    embedded::startHost();
    return RUN_ALL_TESTS();
}
