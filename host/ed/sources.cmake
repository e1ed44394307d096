set(HOST_ED_SOURCES
  editor_events.cpp
  session.cpp)
