#pragma once

// The archives that elements, plugins and settings are saved to and loaded from.
#include "dbx/binary_in_archive.h"
#include "dbx/binary_out_archive.h"
#include "dbx/blob_ref.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
