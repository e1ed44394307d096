set(TEST_SOURCES
  dbx/doc/ORV_CCSysPar_drawing_test.cpp
  dbx/doc/ORV_CCSysPar_dwg_test.cpp
  dbx/doc/ORV_CCSysPar_dxf_test.cpp
  dbx/doc/ORV_CCSysPar_values_test.cpp)
