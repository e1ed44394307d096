#pragma once

// The header to include for elements and their plugins.
#include "dbx/elem/bimid.h"
#include "dbx/elem/element_base.h"
#include "dbx/elem/plugin.h"
#include "dbx/elem/plugin_general.h"
#include "dbx/elem/plugin_registry.h"
#include "dbx/elem/proxy_plugin.h"
