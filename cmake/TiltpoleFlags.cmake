# How everything of this project is compiled; linked privately, so a host inherits none of it.
add_library(tiltpole_flags INTERFACE)
target_compile_features(tiltpole_flags INTERFACE cxx_std_17)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(
    tiltpole_flags
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wsign-conversion
              -Wshadow
              -Wnon-virtual-dtor
              -Wold-style-cast
              -Woverloaded-virtual
              -Wcast-align
              -Wformat=2
              -Wdouble-promotion
              -Wimplicit-fallthrough
              # The same input gives the same bits everywhere: no fused multiply-add behind the
              # back of the written order, no value-changing optimisation.
              -ffp-contract=off)
  if(TILTPOLE_WARNINGS_AS_ERRORS)
    target_compile_options(tiltpole_flags INTERFACE -Werror)
  endif()
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86|i.86|X86")
    # The x87 registers would keep extra bits between operations.
    target_compile_options(tiltpole_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
  endif()
endif()

set(TILTPOLE_SANITIZE
    ""
    CACHE STRING "Sanitizers to build with, for example address,undefined")
if(TILTPOLE_SANITIZE)
  add_compile_options(-fsanitize=${TILTPOLE_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TILTPOLE_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # gcc takes the checks woven into <regex> for uses of what has not been set.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()
