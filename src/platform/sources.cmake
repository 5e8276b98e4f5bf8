target_sources(gvlib PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/afxarchive.cpp
  ${CMAKE_CURRENT_LIST_DIR}/afxexcept.cpp
  ${CMAKE_CURRENT_LIST_DIR}/afxfile.cpp
  ${CMAKE_CURRENT_LIST_DIR}/afxobject.cpp
  ${CMAKE_CURRENT_LIST_DIR}/afxstr.cpp
  ${CMAKE_CURRENT_LIST_DIR}/allocator.cpp
  ${CMAKE_CURRENT_LIST_DIR}/codepage.cpp
  ${CMAKE_CURRENT_LIST_DIR}/collation_weights.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compare_string.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_format.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_number.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_strftime.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/crt_time.cpp
  ${CMAKE_CURRENT_LIST_DIR}/dbvariant.cpp
  ${CMAKE_CURRENT_LIST_DIR}/file_status.cpp
  ${CMAKE_CURRENT_LIST_DIR}/folded_names.cpp
  ${CMAKE_CURRENT_LIST_DIR}/lcid_collation.cpp
  ${CMAKE_CURRENT_LIST_DIR}/loading_policy.cpp
  ${CMAKE_CURRENT_LIST_DIR}/object_pool.cpp
  ${CMAKE_CURRENT_LIST_DIR}/oleauto.cpp
  ${CMAKE_CURRENT_LIST_DIR}/olecurrency.cpp
  ${CMAKE_CURRENT_LIST_DIR}/olevariant.cpp
  ${CMAKE_CURRENT_LIST_DIR}/string_table.cpp
  ${CMAKE_CURRENT_LIST_DIR}/variant_time.cpp
  ${CMAKE_CURRENT_LIST_DIR}/volume_map.cpp
  ${CMAKE_CURRENT_LIST_DIR}/win_path.cpp
  ${CMAKE_CURRENT_LIST_DIR}/win_volume.cpp)
if(GVLIB_FAULT_INJECTION)
  # Test builds only: the allocator and the file layer fail on command.
  target_sources(gvlib PRIVATE ${CMAKE_CURRENT_LIST_DIR}/file_faults.cpp)
  target_compile_definitions(gvlib PRIVATE GVLIB_FAULT_INJECTION)
endif()
