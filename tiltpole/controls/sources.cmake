# The sources of the controls, the same for every windowing system. The tests compile them once
# more, upon a recording one.
set(tiltpole_controls_sources "${CMAKE_CURRENT_LIST_DIR}/../platform/drawing.cpp")
