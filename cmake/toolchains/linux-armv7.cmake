# Linux on 32-bit ARM, version 7 with the floating-point unit in use (the hard-float calling
# convention). The programs run here under qemu's user mode.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
# GCC otherwise notes, at every call, that an old version passed some arguments differently.
set(CMAKE_CXX_FLAGS_INIT "-march=armv7-a+fp -Wno-psabi")
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/arm-linux-gnueabihf)

set(tiltpole_target linux-armv7)
set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
include("${CMAKE_CURRENT_LIST_DIR}/dependencies.cmake")
