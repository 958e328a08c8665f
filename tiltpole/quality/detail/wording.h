#pragma once

// Numbers and names for sentences, the same in every locale.

#include <cmath>
#include <string>

#include "tiltpole/platform/saturate.h"
#include "tiltpole/quality/quality_reason.h"

namespace tiltpole::detail {

inline std::wstring Whole(double value) {
  return std::to_wstring(TruncateSaturated(std::floor(value + 0.5)));
}

inline std::wstring Tenths(double value) {
  if (!std::isfinite(value)) return L"an unknown number of";
  const int tenths = TruncateSaturated(std::floor(std::fabs(value) * 10.0 + 0.5));
  const std::wstring sign = value < 0.0 && tenths > 0 ? L"-" : L"";
  return sign + std::to_wstring(tenths / 10) + L"." + std::to_wstring(tenths % 10);
}

inline std::wstring NameOf(ConcernedMagnetometer magnetometer) {
  switch (magnetometer) {
    case ConcernedMagnetometer::A:
      return L"magnetometer A";
    case ConcernedMagnetometer::B:
      return L"magnetometer B";
    case ConcernedMagnetometer::Both:
      break;
  }
  return L"both magnetometers";
}

inline std::wstring NameOf(ConcernedTurn turn) {
  switch (turn) {
    case ConcernedTurn::Horizontal:
      return L"the turn about the pole's axis";
    case ConcernedTurn::Vertical:
      return L"the turn about the sensor's y axis";
    case ConcernedTurn::Both:
      break;
  }
  return L"both turns";
}

}  // namespace tiltpole::detail
