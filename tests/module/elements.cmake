set(TEST_SOURCES
  dbx/elem/element_triggers_test.cpp)
