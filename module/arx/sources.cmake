set(SOURCES
  dictionary_utils.cpp
  types.cpp)
