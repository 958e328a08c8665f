# Writes tiltpole/version.h into the build tree.
configure_file("${CMAKE_CURRENT_LIST_DIR}/version.h.in"
               "${CMAKE_CURRENT_BINARY_DIR}/generated/tiltpole/version.h" @ONLY)
