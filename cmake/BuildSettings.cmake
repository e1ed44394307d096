# What every target of the tree shares: where things are built, the warnings, the sanitizers.

include(CTest)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

# Programs, libraries and loadable modules stand side by side, as they do in an install tree: the host looks for
# a module beside itself.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

if(MSVC)
  add_compile_options(/W4 /WX /utf-8)
else()
  add_compile_options(-Wall -Wextra -Werror)
endif()

if(TALDORK_SANITIZE)
  # Without the check of dynamic types, which compiling would take a fifth longer for.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# Real drawings for tests and measurements, and a tool that compares two of them; what needs them is skipped without.
set(TALDORK_SHARED_DIR ${CMAKE_SOURCE_DIR}/../shared CACHE PATH "folder with drawings/ and tools/")

include_directories(${CMAKE_SOURCE_DIR})
