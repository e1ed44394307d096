set(TEST_SOURCES
  ../support/test_element.cpp
  dbx/elem/drawn_loads.cpp
  dbx/elem/load_draw_property_test.cpp
  dbx/elem/load_drawing_test.cpp
  dbx/elem/load_export_test.cpp
  dbx/elem/load_failing_curve_test.cpp
  dbx/elem/load_hatch_test.cpp
  dbx/elem/load_hooks_test.cpp
  dbx/elem/load_layout_test.cpp
  dbx/elem/load_lists_test.cpp
  dbx/elem/load_own_curve_test.cpp
  dbx/elem/load_pictures_test.cpp
  dbx/elem/load_plugins.cpp
  dbx/elem/load_stopping_test.cpp
  dbx/elem/loaded_shapes.cpp)
set(TEST_LIBRARIES picture_support)
