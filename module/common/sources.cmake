set(SOURCES
  cdbstubs/dbx_cdb_stubs.cpp)
