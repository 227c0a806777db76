include(CMakePackageConfigHelpers)

set(ORVMATH_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ORV_MathTool)

install(TARGETS ORV_MathTool
  EXPORT ORV_MathToolTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/orvmath DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")
install(EXPORT ORV_MathToolTargets
  NAMESPACE ORV_MathTool::
  DESTINATION ${ORVMATH_CMAKE_DIR})

configure_package_config_file(cmake/ORV_MathToolConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ORV_MathToolConfig.cmake
  INSTALL_DESTINATION ${ORVMATH_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ORV_MathToolConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/ORV_MathToolConfig.cmake
  ${PROJECT_BINARY_DIR}/ORV_MathToolConfigVersion.cmake
  DESTINATION ${ORVMATH_CMAKE_DIR})

# The pkg-config file names its prefix relative to its own folder, so the
# installed tree can be moved (or installed with --prefix) and still work.
file(RELATIVE_PATH ORVMATH_PC_PREFIX_FROM_PCDIR /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" ORVMATH_PC_PREFIX_FROM_PCDIR "${ORVMATH_PC_PREFIX_FROM_PCDIR}")
configure_file(cmake/orvmath.pc.in ${PROJECT_BINARY_DIR}/orvmath.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvmath.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
