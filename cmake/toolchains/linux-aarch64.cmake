# Linux on 64-bit ARM. The programs run here under qemu's user mode.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/aarch64-linux-gnu)

set(tiltpole_target linux-aarch64)
set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
include("${CMAKE_CURRENT_LIST_DIR}/dependencies.cmake")
