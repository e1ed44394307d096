set(HOST_DB_HATCH_SOURCES
  hatch_lines.cpp
  hatch_patterns.cpp
  hatch_pieces.cpp
  hatch_rings.cpp)
