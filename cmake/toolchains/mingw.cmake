# What both Windows targets share; needs tiltpole_mingw, the compiler's prefix.
set(CMAKE_SYSTEM_NAME Windows)
# The variant with POSIX threads: the other one has no std::thread and no std::mutex.
set(CMAKE_C_COMPILER ${tiltpole_mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${tiltpole_mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${tiltpole_mingw}-windres)
# The compiler's run-time goes into each program, so that it runs on its own.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

set(CMAKE_FIND_ROOT_PATH /usr/${tiltpole_mingw})
include("${CMAKE_CURRENT_LIST_DIR}/dependencies.cmake")
