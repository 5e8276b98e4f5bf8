target_sources(gvlib_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVDate_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVMoney_test.cpp)
