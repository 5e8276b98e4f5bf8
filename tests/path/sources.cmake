target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVPathBounds_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathComponents_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathLegal_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathModel_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathTrim_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathUnique_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathURL_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathVolume_test.cpp)
