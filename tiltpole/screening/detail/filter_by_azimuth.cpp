#include "tiltpole/screening/detail/filter_by_azimuth.h"

namespace tiltpole::detail {
namespace {

constexpr int kWindowSamples = 10;
constexpr double kLargestShareOfRepeats = 0.2;

bool IsRepeat(const PoseSensorData& rec) { return rec.Forward == 0; }

struct Window {
  int start = 0;
  int counted = 0;
  int repeats = 0;

  bool HasTooManyRepeats() const {
    return static_cast<double>(repeats) / counted > kLargestShareOfRepeats;
  }
};

// Counts records into the window until it is full or the array ends.
// The index of the record that closed it; the array's size where its last entry is null and so
// cannot close it.
int Fill(Window& window, const PoseSensorDataArray& arr) {
  const int size = arr.GetSize();
  for (int j = window.start; j < size; ++j) {
    const PoseSensorData* rec = arr.GetAt(j);
    if (rec == nullptr) continue;
    ++window.counted;
    if (IsRepeat(*rec)) ++window.repeats;
    if (window.counted >= kWindowSamples || j == size - 1) return j;
  }
  return size;
}

}  // namespace

// Deliberate: each window after the first starts with its first record already counted and counts
// it again, so it takes nine fresh records, and the array's last entry is never kept: 25 records
// without repeats give the first 24.
OwnedArray FilterByAzimuth(const PoseSensorDataArray* arr) {
  if (arr == nullptr) return nullptr;
  auto kept = std::make_unique<PoseSensorDataArray>();
  const int size = arr->GetSize();
  Window window;
  while (window.start < size - 1) {
    const int end = Fill(window, *arr);
    // Arrays with null entries have no place here; one that ends with them would never get beyond
    // its last window, so the filter ends before it.
    if (end == size) break;
    if (window.HasTooManyRepeats()) {
      window = {window.start + 1, 1, 0};
    } else {
      for (int i = window.start; i < end; ++i) kept->Add(arr->GetAt(i));
      window = {end, 1, IsRepeat(*arr->GetAt(end)) ? 1 : 0};
    }
  }
  return NullIfEmpty(std::move(kept));
}

}  // namespace tiltpole::detail
