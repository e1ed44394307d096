#pragma once

// The header to include for the identifiers of elements.
#include "dbx/elem/bimid.h"
