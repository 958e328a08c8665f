#pragma once

// What things are called on the screen.

#include <QString>
#include <string>

#include "apps/field/calibration_state.h"
#include "tiltpole/quality/quality_reason.h"

namespace tiltpole::field {

/// A sentence of the library in the operator's language. The sentences are English and hold
/// numbers; a translation has the sentence with %1, %2 ... in their places as its source text, in
/// the context `tiltpole`. Without a translation the sentence stays as it is.
QString Translated(const std::wstring& sentence);

QString VerdictText(Verdict verdict);
/// What parameters are in force, in a word or two.
QString CalibrationText(const CalibrationState& state);
/// The flags of a point, in words.
QString FlagWords(unsigned flags);

/// Metres to a millimetre; a dash for what cannot be told.
QString Metres(double value);
/// Degrees to a tenth.
QString Degrees(double value);

}  // namespace tiltpole::field
