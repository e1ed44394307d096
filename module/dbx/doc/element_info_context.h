#pragma once

// What elements append their description to.
#include "orvshape/element_contexts.h"
