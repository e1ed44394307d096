#pragma once

namespace orvcore {

// Whether an undo or redo of the host's runs. Known from the commands that the host tells of since this
// library was loaded.
bool undoOrRedoRuns();

} // namespace orvcore
