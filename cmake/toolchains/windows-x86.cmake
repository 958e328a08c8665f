# 32-bit Windows, compiled by MinGW-w64; TiltpoleFlags.cmake asks for SSE2 arithmetic. The programs
# run here where a 32-bit Wine is installed.
set(tiltpole_target windows-x86)
set(tiltpole_mingw i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
find_program(TILTPOLE_WINE NAMES wine32 wine PATHS /usr/lib/wine NO_DEFAULT_PATH)
if(TILTPOLE_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${TILTPOLE_WINE}")
endif()
