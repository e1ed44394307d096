#pragma once

// std::tr1::shared_ptr, which other modules of the family expect in some signatures. Compilers keep it in
// different headers.
#ifdef _MSC_VER
#include <memory>
#else
#include <tr1/memory>
#endif
