# Install rules, the exported CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS gvlib EXPORT gvlibTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/gvlib
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(GVLIB_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/gvlib)
install(EXPORT gvlibTargets NAMESPACE gvlib:: DESTINATION ${GVLIB_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/gvlibConfig.cmake.in
  ${PROJECT_BINARY_DIR}/gvlibConfig.cmake INSTALL_DESTINATION ${GVLIB_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/gvlibConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/gvlibConfig.cmake
  ${PROJECT_BINARY_DIR}/gvlibConfigVersion.cmake DESTINATION ${GVLIB_CMAKE_DIR})

# The .pc file finds its prefix from its own place, so it holds the way back up.
file(RELATIVE_PATH GVLIB_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" GVLIB_PC_TO_PREFIX "${GVLIB_PC_TO_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/gvlib.pc.in ${PROJECT_BINARY_DIR}/gvlib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/gvlib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
