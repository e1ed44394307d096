set(HOST_DB_SOURCES
  database.cpp
  database_core.cpp
  db_classes.cpp
  dictionary.cpp
  dictionary_iterator.cpp
  entity.cpp
  filer.cpp
  host_services.cpp
  memory_filer.cpp
  name_table.cpp
  object.cpp
  object_access.cpp
  object_exchange.cpp
  object_id.cpp
  open_close.cpp
  proxy.cpp
  stub_table.cpp
  transactions.cpp
  undo_log.cpp
  user_coordinate_system.cpp)
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/symbol_sources.cmake)
  include(${CMAKE_CURRENT_LIST_DIR}/symbol_sources.cmake)
  list(APPEND HOST_DB_SOURCES ${HOST_DB_SYMBOL_SOURCES})
endif()
include(${CMAKE_CURRENT_LIST_DIR}/text/sources.cmake)
list(TRANSFORM HOST_DB_TEXT_SOURCES PREPEND text/)
list(APPEND HOST_DB_SOURCES ${HOST_DB_TEXT_SOURCES})
include(${CMAKE_CURRENT_LIST_DIR}/clone/sources.cmake)
list(TRANSFORM HOST_DB_CLONE_SOURCES PREPEND clone/)
list(APPEND HOST_DB_SOURCES ${HOST_DB_CLONE_SOURCES})
include(${CMAKE_CURRENT_LIST_DIR}/reactors/sources.cmake)
list(TRANSFORM HOST_DB_REACTORS_SOURCES PREPEND reactors/)
list(APPEND HOST_DB_SOURCES ${HOST_DB_REACTORS_SOURCES})
include(${CMAKE_CURRENT_LIST_DIR}/entities/sources.cmake)
list(TRANSFORM HOST_DB_ENTITIES_SOURCES PREPEND entities/)
list(APPEND HOST_DB_SOURCES ${HOST_DB_ENTITIES_SOURCES})
include(${CMAKE_CURRENT_LIST_DIR}/hatch/sources.cmake)
list(TRANSFORM HOST_DB_HATCH_SOURCES PREPEND hatch/)
list(APPEND HOST_DB_SOURCES ${HOST_DB_HATCH_SOURCES})
