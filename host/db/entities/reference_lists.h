#pragma once

namespace embedded {

class DatabaseCore;

// A block's record lists the references to it. Before a save: puts those that are new into the lists, takes
// those that are erased or show another block now out of them, and marks the records that this has changed.
// Looks only at references and blocks that were written to.
void bringReferenceListsUpToDate(DatabaseCore& core);

} // namespace embedded
