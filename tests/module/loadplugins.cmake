set(TEST_SOURCES
  ../support/test_element.cpp
  dbx/elem/element_load_test.cpp
  dbx/elem/free_load_base_test.cpp
  dbx/elem/generic_load_body_test.cpp
  dbx/elem/generic_load_test.cpp
  dbx/elem/load_plugins.cpp
  dbx/elem/loads_in_drawing_test.cpp)
