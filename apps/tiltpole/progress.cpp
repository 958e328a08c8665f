#include "apps/tiltpole/progress.h"

#include <algorithm>
#include <utility>

namespace tiltpole::cli {
namespace {

constexpr auto kBetweenUpdates = std::chrono::milliseconds(200);
// Asking for the time at every row would cost more than many a row.
constexpr std::uint64_t kRowsBetweenLooks = 4096;

}  // namespace

Progress::Progress(Console& console, std::string what, std::optional<std::uint64_t> total)
    : console_(console),
      what_(std::move(what)),
      total_(total),
      next_(std::chrono::steady_clock::now() + kBetweenUpdates) {}

Progress::~Progress() {
  if (shown_) console_.err << "\r\x1b[K" << std::flush;
}

void Progress::Row(std::uint64_t done) {
  ++rows_;
  if (!console_.err_is_terminal || rows_ % kRowsBetweenLooks != 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < next_) return;
  next_ = now + kBetweenUpdates;
  Show(done);
}

void Progress::Show(std::uint64_t done) {
  shown_ = true;
  console_.err << '\r' << what_ << ": " << std::to_string(rows_) << " rows";
  if (total_ && *total_ > 0) {
    console_.err << ", " << std::to_string(std::min<std::uint64_t>(100, done * 100 / *total_))
                 << " %";
  }
  console_.err << "\x1b[K" << std::flush;
}

}  // namespace tiltpole::cli
