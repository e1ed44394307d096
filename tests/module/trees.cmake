set(TEST_SOURCES
  base/registry_test.cpp
  dbx/elem/load_data_test.cpp
  dbx/elem/load_data_property_test.cpp
  dbx/keyvalue/locale_text_test.cpp
  dbx/keyvalue/serialization_test.cpp
  dbx/keyvalue/tree_property_test.cpp
  dbx/keyvalue/tree_reader_writer_test.cpp)
