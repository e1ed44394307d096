set(HOST_GE_SOURCES
  ge_globals.cpp
  gemat3d.cpp
)
