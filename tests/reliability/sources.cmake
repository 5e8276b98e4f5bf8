# Machine failures: allocations and file calls failing on command, and threads.
if(GVLIB_FAULT_INJECTION)
  target_sources(gvlib_tests PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/alloc_failure_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/io_fault_test.cpp)
  # The fault switches are the library's internal header.
  target_include_directories(gvlib_tests PRIVATE ${PROJECT_SOURCE_DIR}/src)
endif()
target_sources(gvlib_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/thread_stress_test.cpp)
