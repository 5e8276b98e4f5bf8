target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVDate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVDateConvert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVDateText.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVDateWeek.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVMoney.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVMoneyConvert.cpp)
