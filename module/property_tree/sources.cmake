set(SOURCES
  arx/filed_text.cpp
  arx/property_tree_compare.cpp
  arx/property_tree_filer.cpp
  arx/property_tree_values.cpp)
