#pragma once

// All about loads, but how they are drawn.
#include "dbx/elem/element_load.h"
#include "dbx/elem/free_load_base.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_base.h"
#include "dbx/elem/load_distribution_functions.h"
#include "dbx/elem/load_types.h"
#include "dbx/elem/load_vertex.h"
#include "dbx/elem/load_visualization_data.h"
#include "dbx/elem/vertex_list_util.h"
