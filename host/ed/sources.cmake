set(HOST_ED_SOURCES
  session.cpp)
