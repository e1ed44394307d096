#pragma once

class AcRxDynamicLinker;

namespace orv {

// The host's linker, looked up by its name each time: applications may put their own in its place.
AcRxDynamicLinker* linker();

} // namespace orv
