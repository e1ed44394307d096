# An install tree is a build's bin folder: program, libraries and loadable modules side by side, found through $ORIGIN.
# Beside it stand the headers and a package for who builds on the module: find_package(taldork), target taldork::module.
if(TALDORK_CLI)
  install(TARGETS taldork taldork_arx structure_arx RUNTIME DESTINATION bin LIBRARY DESTINATION bin)
endif()
install(TARGETS structure191_x64 RUNTIME DESTINATION bin LIBRARY DESTINATION bin)
install(TARGETS taldork191_x64 orvshape orvcore orvcheck host platform
  EXPORT taldork-targets
  RUNTIME DESTINATION bin
  LIBRARY DESTINATION bin
  ARCHIVE DESTINATION lib)

set(TALDORK_HEADERS FILES_MATCHING PATTERN "*.h" PATTERN "*.inc")
install(DIRECTORY ${CMAKE_SOURCE_DIR}/platform DESTINATION include/taldork ${TALDORK_HEADERS})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/family/ DESTINATION include/taldork/family ${TALDORK_HEADERS})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/module/ DESTINATION include/taldork/module ${TALDORK_HEADERS})
foreach(room rx ge db gi plot ed dwg)
  if(EXISTS ${CMAKE_SOURCE_DIR}/host/${room}/inc)
    install(DIRECTORY ${CMAKE_SOURCE_DIR}/host/${room}/inc/ DESTINATION include/taldork/host ${TALDORK_HEADERS})
  endif()
endforeach()

install(EXPORT taldork-targets NAMESPACE taldork:: DESTINATION lib/cmake/taldork)
install(FILES ${CMAKE_SOURCE_DIR}/cmake/taldork-config.cmake DESTINATION lib/cmake/taldork)
