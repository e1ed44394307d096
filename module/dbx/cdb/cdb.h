#pragma once

// The record stores: what one is, the one in the drawing, the manager and guards through which stores are
// held, and copying and synchronising between any two of them.

#include "dbx/cdb/cdb_manager.h"
#include "dbx/cdb/cdb_types.h"
#include "dbx/cdb/copy_sync.h"
#include "dbx/cdb/icdb.h"
#include "dbx/cdb/nod_cdb.h"
#include "dbx/cdb/read_blob.h"
#include "dbx/cdb/use_cdb.h"
#include "dbx/cdb/use_pl_cdb.h"
