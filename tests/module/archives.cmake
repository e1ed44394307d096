set(TEST_SOURCES
  dbx/archive_interface_test.cpp
  dbx/archive_property_test.cpp
  dbx/binary_in_archive_test.cpp
  dbx/binary_out_archive_test.cpp
  dbx/doc/visual_settings_defaults_test.cpp
  dbx/doc/visual_settings_test.cpp)
