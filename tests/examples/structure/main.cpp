#include "embedded/host_start.h"
#include "platform/files.h"
#include "platform/registry.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Nothing of a test may reach the user's own registry.
    const std::wstring folder = platform::makeTemporaryFolder();
    platform::registry::setRegistryFile(platform::joinPath(folder, L"registry"));
    embedded::startHost();
    return RUN_ALL_TESTS();
}
