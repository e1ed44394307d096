#pragma once

#include "rxdefs.h"

#include <functional>
#include <vector>

// What a test module was sent, and what it is to do then.
struct ModuleJournal {
    std::vector<int> messages;
    int registrations = 0;
    void* packet = nullptr;
    void* instance = nullptr;
    std::function<void()> onInit;
    std::function<void()> onUnload;
    std::function<void(int)> onMessage; // any message, the two above excepted
};
