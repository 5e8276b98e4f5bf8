target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/buffer_block.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVBufferEdit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVBufferConvert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RZMemFile.cpp)
