target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVString_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringCompare_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVStringSerialize_test.cpp)
