target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/GVPathComponents.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathExplode.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathLegal.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathModel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathRelative.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathTrim.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathUnique.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathURL.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GVPathVolume.cpp)
