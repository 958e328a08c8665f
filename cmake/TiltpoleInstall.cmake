include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# tiltpole_install_library(<target> <part> <library component> <development component>): the
# libraries are found beside each other, wherever the tree is put, and a host finds each part by the
# targets in a file of its own.
function(tiltpole_install_library target part component development)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(
    TARGETS ${target}
    EXPORT tiltpole-${part}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${development}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT ${component}
            NAMELINK_COMPONENT ${development}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component}
    INCLUDES
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(
    EXPORT tiltpole-${part}
    NAMESPACE tiltpole::
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tiltpole
    COMPONENT ${development})
endfunction()

# tiltpole_install_headers(<development component> <header>...), named from the folder tiltpole
function(tiltpole_install_headers development)
  foreach(header IN LISTS ARGN)
    cmake_path(GET header PARENT_PATH folder)
    install(
      FILES "${PROJECT_SOURCE_DIR}/tiltpole/${header}"
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tiltpole/${folder}
      COMPONENT ${development})
  endforeach()
endfunction()

# Only what a host can include goes along: tiltpole.h, tiltpole_c.h, the controls, and what these
# include themselves. The rest may change with any version.
tiltpole_install_library(tiltpole core runtime development)
install(
  DIRECTORY "${PROJECT_SOURCE_DIR}/tiltpole"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development
  FILES_MATCHING
  PATTERN "*.h"
  REGEX "/(controls|detail|platform)$" EXCLUDE)
tiltpole_install_headers(development platform/file.h platform/message_box.h)
install(
  FILES "${PROJECT_BINARY_DIR}/generated/tiltpole/export.h"
        "${PROJECT_BINARY_DIR}/generated/tiltpole/version.h"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tiltpole
  COMPONENT development)

if(TARGET tiltpole_controls)
  tiltpole_install_library(tiltpole_controls controls controls controls_development)
  install(
    DIRECTORY "${PROJECT_SOURCE_DIR}/tiltpole/controls"
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tiltpole
    COMPONENT controls_development
    FILES_MATCHING
    PATTERN "*.h"
    PATTERN detail EXCLUDE)
  # The controls are classes with members of these types.
  tiltpole_install_headers(
    controls_development
    controls/detail/compass_geometry.h
    controls/detail/gauge_geometry.h
    controls/detail/incline_gauge.h
    controls/detail/kept_dial.h
    controls/detail/layer.h
    controls/detail/magnetic_plot.h
    controls/detail/plot_kind.h
    platform/drawing.h
    platform/window.h
    platform/${TILTPOLE_WINDOWING}/window_${TILTPOLE_WINDOWING}.h)
  install(
    FILES "${PROJECT_BINARY_DIR}/generated/tiltpole/controls_export.h"
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tiltpole
    COMPONENT controls_development)
endif()

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/tiltpoleConfig.cmake.in" "${PROJECT_BINARY_DIR}/tiltpoleConfig.cmake"
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tiltpole)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/tiltpoleConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(
  FILES "${PROJECT_BINARY_DIR}/tiltpoleConfig.cmake"
        "${PROJECT_BINARY_DIR}/tiltpoleConfigVersion.cmake"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tiltpole
  COMPONENT development)
include(TiltpolePkgConfig)

foreach(tool tiltpole_cli tiltpole_field)
  if(TARGET ${tool})
    set_target_properties(${tool} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS ${tool} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  endif()
endforeach()
