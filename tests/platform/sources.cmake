target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/allocator_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/archive_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/codepage_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compare_string_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_format_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_time_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/cstring_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/full_path_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/memfile_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/object_pool_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/variant_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/volumes_test.cpp)
