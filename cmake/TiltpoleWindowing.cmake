# Which windowing system the controls are built for. Without a choice: the one of the platform,
# if it is there; within another project none, for that one may want no windows.
if(NOT DEFINED CACHE{TILTPOLE_WINDOWING})
  if(NOT PROJECT_IS_TOP_LEVEL)
    set(tiltpole_windowing_found none)
  elseif(WIN32)
    set(tiltpole_windowing_found win32)
  else()
    find_package(Qt6 6.4 QUIET COMPONENTS Widgets)
    if(Qt6_FOUND)
      set(tiltpole_windowing_found qt)
    else()
      set(tiltpole_windowing_found none)
    endif()
  endif()
endif()
set(TILTPOLE_WINDOWING
    "${tiltpole_windowing_found}"
    CACHE STRING "The controls' windowing system: qt, win32 or none")
set_property(CACHE TILTPOLE_WINDOWING PROPERTY STRINGS qt win32 none)

if(TILTPOLE_WINDOWING STREQUAL "qt")
  find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)
elseif(NOT TILTPOLE_WINDOWING MATCHES "^(win32|none)$")
  message(FATAL_ERROR "TILTPOLE_WINDOWING is '${TILTPOLE_WINDOWING}'; it can be qt, win32 or none")
endif()
message(STATUS "tiltpole: windowing system for the controls: ${TILTPOLE_WINDOWING}")
