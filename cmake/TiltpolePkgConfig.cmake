# What pkg-config knows of the library. The prefix is told from where the file lies, so that a tree
# can be installed or moved anywhere; with a library folder outside it, the prefix stays as configured.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(tiltpole_pc_prefix "${CMAKE_INSTALL_PREFIX}")
else()
  string(REGEX REPLACE "[^/]+" ".." tiltpole_pc_prefix "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
  string(PREPEND tiltpole_pc_prefix "\${pcfiledir}/")
endif()
# An absolute folder takes the place of the prefix.
cmake_path(APPEND tiltpole_pc_libdir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND tiltpole_pc_includedir "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")

# tiltpole_install_pkg_config(<name> <component>)
function(tiltpole_install_pkg_config name component)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
  install(
    FILES "${PROJECT_BINARY_DIR}/${name}.pc"
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT ${component})
endfunction()

tiltpole_install_pkg_config(tiltpole development)
if(TARGET tiltpole_controls)
  if(TILTPOLE_WINDOWING STREQUAL "qt")
    set(tiltpole_pc_windowing_cflags "-DTILTPOLE_WINDOWING_QT")
    set(tiltpole_pc_windowing_requires ", Qt6Widgets >= 6.4")
  else()
    set(tiltpole_pc_windowing_cflags "-DTILTPOLE_WINDOWING_WIN32")
    set(tiltpole_pc_windowing_libs " -lcomctl32 -luser32 -lgdi32")
  endif()
  tiltpole_install_pkg_config(tiltpole-controls controls_development)
endif()
