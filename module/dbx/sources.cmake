set(SOURCES
  NamedSelection.cpp
  binary_in_archive.cpp
  binary_out_archive.cpp
  dictionary.cpp
  nod.cpp
  syncinfo.cpp
  tools.cpp)
