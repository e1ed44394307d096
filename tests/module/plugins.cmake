set(TEST_SOURCES
  ../support/test_element.cpp
  dbx/elem/connected_elements_in_drawing_test.cpp
  dbx/elem/plugin_connected_elements_test.cpp
  dbx/elem/plugin_general_in_drawing_test.cpp
  dbx/elem/plugin_general_test.cpp)
