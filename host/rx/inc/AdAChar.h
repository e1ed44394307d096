#pragma once

// Text at the host's interfaces is wide everywhere.
using ACHAR = wchar_t;

// Makes a wide literal of a narrow one, also of one that a macro built.
#define ACRX_T(text) ACRX_T_(text)
#define ACRX_T_(text) L##text
