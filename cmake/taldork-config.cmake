# For who builds on the module. Needs Boost's headers, as the module's own do.
include(CMakeFindDependencyMacro)
find_dependency(Boost)
include(${CMAKE_CURRENT_LIST_DIR}/taldork-targets.cmake)
add_library(taldork::module ALIAS taldork::taldork191_x64)
