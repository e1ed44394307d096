#pragma once

namespace embedded {

// Brings the host's rooms up, each once and in their order, then builds the class hierarchy. Every program
// calls it before it uses the host. A second call does nothing.
void startHost();
bool hostIsStarted();

// A room's initialiser, entered by a static object of the room's. Lower orders run first: rx 10, ge 20, db
// 30, gi 40, ed 50, dwg 60. One that is entered after the start runs at once.
class RoomInitialiser {
public:
    RoomInitialiser(int order, void (*initialise)());
};

} // namespace embedded
