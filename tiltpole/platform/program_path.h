#pragma once

/// @file
/// Where the running program stands.

#include <string>

#include "tiltpole/export.h"

namespace tiltpole::detail {

/// The full file name of the running program's executable: "/opt/field/bin/field" or
/// "C:\Field\field.exe". Empty when the system does not tell.
TILTPOLE_EXPORT std::wstring ProgramPath();

}  // namespace tiltpole::detail
