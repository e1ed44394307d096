#pragma once

#include <functional>
#include <string>

namespace embedded {

struct LinkerCall {
    enum Kind { kLoad, kUnload } kind;
    std::wstring name; // as the caller gave it
    bool flag;         // whether messages are printed (load), or whether a command asked (unload)
};

using LinkerObserver = std::function<void(const LinkerCall&)>;

// Hears of each call of the linker's loadModule and unloadModule before it is done, whether or not there is
// such a module. An empty function ends it. Gives the observer that was there.
LinkerObserver setLinkerObserver(LinkerObserver observer);

} // namespace embedded
