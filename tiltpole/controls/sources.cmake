# The sources of the controls, the same for every windowing system. The tests compile them once
# more, upon a recording one.
set(tiltpole_controls_sources
    ../platform/drawing.cpp
    CGraphCompass.cpp
    CGraphIncline_Left.cpp
    CGraphIncline_Right.cpp
    CGraphMagnetic_XY.cpp
    CGraphMagnetic_XZ.cpp
    MagneticPoint.cpp
    detail/compass_geometry.cpp
    detail/gauge_geometry.cpp
    detail/incline_gauge.cpp
    detail/kept_dial.cpp
    detail/layer.cpp
    detail/magnetic_plot.cpp
    detail/plot_axes.cpp
    detail/plot_view.cpp
    detail/view_file.cpp)
list(TRANSFORM tiltpole_controls_sources PREPEND "${CMAKE_CURRENT_LIST_DIR}/")
