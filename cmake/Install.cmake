# Installs the shared library, the public headers, the CMake package and ztcommon.pc.
include(CMakePackageConfigHelpers)

install(TARGETS ztcommon EXPORT ZtCommonTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/ztcommon DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(ZT_BUILD_TOOLS)
  install(TARGETS ztc RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(ZT_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZtCommon)
install(EXPORT ZtCommonTargets NAMESPACE ZtCommon:: DESTINATION ${ZT_CMAKE_DIR})
configure_package_config_file(cmake/ZtCommonConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/ZtCommonConfig.cmake INSTALL_DESTINATION ${ZT_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZtCommonConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZtCommonConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ZtCommonConfigVersion.cmake DESTINATION ${ZT_CMAKE_DIR})

# The .pc file finds its prefix from its own place, so a package installed with --prefix works.
file(RELATIVE_PATH ZT_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" ZT_PC_TO_PREFIX "${ZT_PC_TO_PREFIX}")
configure_file(cmake/ztcommon.pc.in ${CMAKE_CURRENT_BINARY_DIR}/ztcommon.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztcommon.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
