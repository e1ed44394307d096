#pragma once

// The structural systems of a drawing: what one is, the conversion between drawing and store, the manager
// that knows them all, the guard through which an entity reaches its own, and the link of an element to its
// store.

#include "dbx/doc/converter.h"
#include "dbx/doc/database_element_base.h"
#include "dbx/doc/system.h"
#include "dbx/doc/system_manager.h"
#include "dbx/doc/use_system.h"
