#pragma once

class AcRxDynamicLinker;

namespace orv {

// The host's linker, looked up by its name each time: applications may put their own in its place. Null if
// nothing stands there, as when the host goes down, or something that is no linker.
AcRxDynamicLinker* linker();

// Asks the linker to unload a module, without a message. A module that is not loaded is no failure; without a
// linker nothing happens.
void unloadModule(const wchar_t* name);

} // namespace orv
