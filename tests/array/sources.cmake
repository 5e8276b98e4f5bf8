target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVArray_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVSort_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVLongArray_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringArray_test.cpp)
