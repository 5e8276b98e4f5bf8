target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVPathBounds_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathComponents_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathExplode_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathModel_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathTrim_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathURL_test.cpp)
