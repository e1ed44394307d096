set(SOURCES
  unique_numbering.cpp)
