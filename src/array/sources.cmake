target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVArray.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVArrayPersist.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVArraySort.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVSort.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVLongArray.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringArray.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringArrayPersist.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringPtrArray.cpp)
