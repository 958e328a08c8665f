# Linux on this machine's own processor, compiled by clang.
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
