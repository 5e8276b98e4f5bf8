target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVString.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringOperators.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringArchive.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringConvert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVSortLCID.cpp)
