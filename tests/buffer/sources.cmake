target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVBuffer_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVBufferSerialize_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RZMemFile_test.cpp)
