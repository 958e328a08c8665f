# 64-bit Windows, compiled by MinGW-w64. The programs run here under Wine.
set(tiltpole_target windows-x64)
set(tiltpole_mingw x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
find_program(TILTPOLE_WINE NAMES wine64 wine64-stable wine PATHS /usr/lib/wine)
if(TILTPOLE_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${TILTPOLE_WINE}")
endif()
