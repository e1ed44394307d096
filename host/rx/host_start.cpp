#include "embedded/host_start.h"

#include "rxclass.h"
#include "rxdict.h"

#include <algorithm>
#include <vector>

namespace embedded {

namespace {

struct Room {
    int order;
    void (*initialise)();
};

// Filled by static objects in any order, so it is made by whichever comes first.
std::vector<Room>& rooms() {
    static std::vector<Room> all;
    return all;
}

bool g_started = false;

const RoomInitialiser g_runTimeRoom(10, [] { acrxSysRegistry(); });

} // namespace

RoomInitialiser::RoomInitialiser(int order, void (*initialise)()) {
    if (g_started)
        initialise();
    else
        rooms().push_back({order, initialise});
}

bool hostIsStarted() { return g_started; }

void startHost() {
    if (g_started)
        return;
    g_started = true;
    std::stable_sort(rooms().begin(), rooms().end(),
                     [](const Room& left, const Room& right) { return left.order < right.order; });
    for (const Room& room : rooms())
        room.initialise();
    acrxBuildClassHierarchy();
}

} // namespace embedded
