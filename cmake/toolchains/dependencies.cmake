# Where a cross build looks for packages: the compiler's own folders, and the prefix into which
# scripts/cross_dependencies.sh puts what the tests and the command line need.
list(APPEND CMAKE_FIND_ROOT_PATH
     "${CMAKE_CURRENT_LIST_DIR}/../../build/deps/${tiltpole_target}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
