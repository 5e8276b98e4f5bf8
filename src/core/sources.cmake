target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVLong.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVLongConvert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVObject.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVObjectFactory.cpp
  ${CMAKE_CURRENT_LIST_DIR}/QXStringStream.cpp
  ${CMAKE_CURRENT_LIST_DIR}/stream_io.cpp)
