#pragma once

namespace embedded {

// Registers the run-time classes of this room. Called at the host's start, before any database is made.
void initDbClasses();
// Those of the symbol tables, their records and what a drawing always holds beside them.
void initSymbolTableClasses();

} // namespace embedded
