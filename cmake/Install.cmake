# An install tree is a build's bin folder: program, libraries and loadable modules side by side, found through $ORIGIN.
install(TARGETS taldork taldork_arx taldork191_x64 orvcore orvcheck host platform
  RUNTIME DESTINATION bin
  LIBRARY DESTINATION bin
  ARCHIVE EXCLUDE_FROM_ALL)
