include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# tiltpole_install_library(<target> <component>): found beside each other, wherever the tree is put.
function(tiltpole_install_library target component)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(
    TARGETS ${target}
    EXPORT tiltpole
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT ${component}
            NAMELINK_COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component}
    INCLUDES
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()

tiltpole_install_library(tiltpole runtime)
set(tiltpole_headers_left_out "recording$")
if(TARGET tiltpole_controls)
  tiltpole_install_library(tiltpole_controls controls)
else()
  list(APPEND tiltpole_headers_left_out "controls$" "platform/(qt|win32)$"
       "platform/(drawing|window)\\.h$")
endif()
list(JOIN tiltpole_headers_left_out "|" tiltpole_headers_left_out)
install(
  DIRECTORY "${PROJECT_SOURCE_DIR}/tiltpole"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development
  FILES_MATCHING
  PATTERN "*.h"
  REGEX "${tiltpole_headers_left_out}" EXCLUDE)
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

foreach(tool tiltpole_cli tiltpole_field)
  if(TARGET ${tool})
    set_target_properties(${tool} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS ${tool} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  endif()
endforeach()
