# The text filer.
set(HOST_DB_TEXT_SOURCES
  ascii_groups.cpp
  binary_groups.cpp
  group_text.cpp
  group_types.cpp
  group_values.cpp
  object_fields.cpp
  object_text.cpp
  resbuf.cpp
  text_filer.cpp
  text_filer_read.cpp
  text_filer_write.cpp)
