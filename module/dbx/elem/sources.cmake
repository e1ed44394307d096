set(SOURCES
  ObjectProperties.cpp
  bimid.cpp
  element_log.cpp
  property.cpp
  property_serializers.cpp)
