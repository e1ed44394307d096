set(HOST_DB_REACTORS_SOURCES
  cancel.cpp
  notices.cpp
  reactor_classes.cpp)
