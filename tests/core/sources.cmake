target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ArchiveDamage_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVLong_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVObject_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/QXStringStream_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TextStream_test.cpp)
