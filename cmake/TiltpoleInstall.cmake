include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(tiltpole_installed_targets tiltpole)
if(TARGET tiltpole_controls)
  list(APPEND tiltpole_installed_targets tiltpole_controls)
endif()

install(
  TARGETS ${tiltpole_installed_targets}
  EXPORT tiltpole
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          COMPONENT runtime
          NAMELINK_COMPONENT development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  INCLUDES
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(
  DIRECTORY "${PROJECT_SOURCE_DIR}/tiltpole"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development
  FILES_MATCHING
  PATTERN "*.h"
  PATTERN "platform/recording" EXCLUDE)
install(
  DIRECTORY "${PROJECT_BINARY_DIR}/generated/tiltpole"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development)
install(
  EXPORT tiltpole
  NAMESPACE tiltpole::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tiltpole
  COMPONENT development)

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/tiltpoleConfig.cmake.in" "${PROJECT_BINARY_DIR}/tiltpoleConfig.cmake"
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tiltpole)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/tiltpoleConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
configure_file("${CMAKE_CURRENT_LIST_DIR}/tiltpole.pc.in" "${PROJECT_BINARY_DIR}/tiltpole.pc" @ONLY)
install(
  FILES "${PROJECT_BINARY_DIR}/tiltpoleConfig.cmake"
        "${PROJECT_BINARY_DIR}/tiltpoleConfigVersion.cmake"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tiltpole
  COMPONENT development)
install(
  FILES "${PROJECT_BINARY_DIR}/tiltpole.pc"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)
