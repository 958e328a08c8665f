#pragma once

#include <memory>
#include <utility>

#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole::detail {

// A result on its way to the caller, who gets it with release() and deletes it.
using OwnedArray = std::unique_ptr<PoseSensorDataArray>;

// The filters hand out no empty arrays.
inline OwnedArray NullIfEmpty(OwnedArray arr) {
  return arr->GetSize() == 0 ? nullptr : std::move(arr);
}

}  // namespace tiltpole::detail
