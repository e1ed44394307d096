set(HOST_ED_SOURCES
  inventory.cpp
  session.cpp)
