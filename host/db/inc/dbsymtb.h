#pragma once

#include "symbols/block_table.h"
#include "symbols/dim_style_table.h"
#include "symbols/layer_table.h"
#include "symbols/linetype_table.h"
#include "symbols/reg_app_table.h"
#include "symbols/symbol_table.h"
#include "symbols/text_style_table.h"
#include "symbols/ucs_table.h"
#include "symbols/view_table.h"
#include "symbols/viewport_table.h"
#include "symbols/vx_table.h"
