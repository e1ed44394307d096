#pragma once

#include "AdAChar.h"
#include "acadstrc.h"

// The text of a status, which lives as long as the program; null for a number that is no status.
const ACHAR* acadErrorStatusText(Acad::ErrorStatus es);
