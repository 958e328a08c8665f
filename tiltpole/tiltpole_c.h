#ifndef TILTPOLE_TILTPOLE_C_H
#define TILTPOLE_TILTPOLE_C_H

/// @file
/// The library for C, and for every language that can call C: measuring, calibrating, screening a
/// turn, transforming, judging points and calibrations, and entries of a parameter file.
///
/// C++ alone has the controls, the matrices and what takes them: the Kalman filter, and the
/// filters of tiltpole::CInclineSensor_MagneticAdjust for a host's own matrices. It also has the
/// azimuth of a tip (tiltpole::CInclineSensor_Position::GetAngleofPoleProject), the sectors that a
/// turn covers (tiltpole::CoveredSectors), the replacing of a parameter file that holds a host's
/// own entries (tiltpole_position_replace() replaces that of a pole), and the single steps that the
/// classes open to those that derive from them.
///
/// **Results.** Every function that can fail returns a tiltpole_result: 0 when it did what it says,
/// else a positive number, and then tiltpole_last_error() says in a sentence what was wrong. After
/// a failure what the function was to fill is unchanged, unless its description says otherwise. A
/// pointer or a handle that is null where one is needed is such a failure, no crash. No exception
/// leaves a function.
///
/// **Arrays** are a pointer and a count; with a count of 0 the pointer may be null. A function that
/// gives an array takes the room there is (`capacity`), fills as much as fits and tells in `count`
/// how many there are: called with a capacity of 0 it only tells.
///
/// **Handles** come from a `create` function and go to the `destroy` function of their kind, once;
/// destroying null does nothing. A handle serves one thread at a time; different handles may be
/// used on different threads, but for the message handler, which is one for the whole process.
///
/// **Texts** are UTF-8, paths too, on every system. Texts that the library gives stay its own.
///
/// What each operation computes, its units and its ranges are those of the class behind it; the
/// C++ headers tell more than is repeated here.

#include "tiltpole/c/calibration.h"
#include "tiltpole/c/parameter_file.h"
#include "tiltpole/c/position.h"
#include "tiltpole/c/quality.h"
#include "tiltpole/c/screening.h"
#include "tiltpole/c/transformation.h"
#include "tiltpole/c/types.h"

#endif
