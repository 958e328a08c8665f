#pragma once

/// @file
/// The entries of a pole's parameter file.

#include <array>

namespace tiltpole {

/// The keys of a pole's parameter file, in the order of its lines: what
/// CInclineSensor_Position::ConfigSave() writes and ConfigRead() looks up. For hosts that look at a
/// file with CParameterFile before they rely on it.
///
/// Deliberate: a to e come before the centre, which is not the order of the correction's fields.
inline constexpr std::array<const wchar_t*, 21> kParameterKeys = {
    L"MagneticA.a",         L"MagneticA.b",  L"MagneticA.c",  L"MagneticA.d",
    L"MagneticA.e",         L"MagneticA.x0", L"MagneticA.y0", L"MagneticA.z0",
    L"MagneticB.a",         L"MagneticB.b",  L"MagneticB.c",  L"MagneticB.d",
    L"MagneticB.e",         L"MagneticB.x0", L"MagneticB.y0", L"MagneticB.z0",
    L"CoorTrans.dX",        L"CoorTrans.dY", L"CoorTrans.dZ", L"MagneticBiasAngle_A",
    L"MagneticBiasAngle_B",
};

}  // namespace tiltpole
