#include "apps/field/point_store.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include "apps/field/point_rows.h"
#include "apps/session/input_error.h"
#include "apps/session/output_file.h"

namespace tiltpole::field {
namespace fs = std::filesystem;
namespace {

std::FILE* OpenForAppending(const fs::path& path) {
#ifdef _WIN32
  return _wfopen(path.c_str(), L"ab");
#else
  return std::fopen(path.c_str(), "ab");
#endif
}

bool BringToMedium(std::FILE* file) {
#ifdef _WIN32
  return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
#else
  return std::fflush(file) == 0 && fsync(fileno(file)) == 0;
#endif
}

std::string ContentOf(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// As an output that appears whole, since putting it in its place brings its folder to the medium,
// too: without that a new file can be gone after a power cut, with all of its points. Where this
// fails, the opening for appending makes the file, or says why there is none.
void MakeFile(const fs::path& path) {
  try {
    session::OutputFile file(path.u8string(), std::cout);
    file.Stream() << PointHeader();
    file.Commit();
  } catch (const session::OutputError&) {  // the opening says it
  }
}

fs::path PlaceOf(const std::string& path) {
  std::error_code error;
  return fs::absolute(fs::u8path(path), error);
}

// Without links, and without . and .. in it, as far as there are files.
fs::path Resolved(const fs::path& place) {
  std::error_code error;
  const fs::path resolved = fs::weakly_canonical(place, error);
  return error ? place : resolved;
}

}  // namespace

PointStore::PointStore(const std::string& path) : path_(path), place_(PlaceOf(path)) {
  std::error_code error;
  if (fs::exists(place_, error) && !fs::is_regular_file(place_, error)) {
    throw session::InputError(path, "is no plain file");
  }
  // A link to nowhere stays a link.
  const bool is_free = !place_.empty() && !fs::exists(fs::symlink_status(place_, error));
  if (is_free) MakeFile(place_);
  const std::string content = ContentOf(place_);
  const bool begun = PointHeader().compare(0, content.size(), content) != 0 &&
                     content.compare(0, PointHeader().size(), PointHeader()) != 0;
  if (begun) throw session::InputError(path, "holds something else than points; it is left alone");
  file_.reset(OpenForAppending(place_));
  // Without a buffer: a row that failed must not come along with a later one.
  if (!file_ || std::setvbuf(file_.get(), nullptr, _IONBF, 0) != 0) {
    throw session::OutputError(path + ": cannot be opened for writing");
  }
  // A row that was cut off keeps what it has; the next one begins on a line of its own.
  const std::string header = PointHeader();
  if (content.size() < header.size()) {
    Write(header.substr(content.size()));
  } else if (content.back() != '\n') {
    Write("\n");
  }
  TakeUp(content);
}

void PointStore::TakeUp(const std::string& content) {
  std::istringstream lines(content);
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    if (line.empty()) continue;
    try {
      points_.push_back(PointFromRow(line));
    } catch (const session::InputError&) {
      ++unreadable_rows_;
    }
  }
}

bool PointStore::IsAt(const std::string& path) const {
  const fs::path place = PlaceOf(path);
  std::error_code error;
  if (fs::equivalent(place, place_, error)) return true;
  // A file that was removed meanwhile still has its place.
  return Resolved(place) == Resolved(place_);
}

void PointStore::Write(const std::string& text) {
  const std::string whole = (row_is_cut_off_ ? "\n" : "") + text;
  const bool written = std::fwrite(whole.data(), 1, whole.size(), file_.get()) == whole.size();
  row_is_cut_off_ = !BringToMedium(file_.get()) || !written;
  if (!row_is_cut_off_) return;
  throw session::OutputError(path_ + ": the medium does not take the point");
}

void PointStore::Append(StoredPoint point) {
  int largest = 0;
  for (const StoredPoint& stored : points_) largest = std::max(largest, stored.number);
  point.number = largest + 1;
  Write(PointRow(point));
  points_.push_back(std::move(point));
}

}  // namespace tiltpole::field
