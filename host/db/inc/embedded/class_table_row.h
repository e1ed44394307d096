#pragma once

#include <string>

namespace embedded {

// A row of the drawing's class table.
struct ClassTableRow {
    int number = 0;
    int proxyFlags = 0;
    std::wstring applicationName;
    std::wstring className;
    std::wstring dxfName;
    bool wasAZombie = false;
    bool isEntity = false;
};

} // namespace embedded
