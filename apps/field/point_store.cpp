#include "apps/field/point_store.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
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

namespace tiltpole::field {
namespace {

std::FILE* OpenForAppending(const std::filesystem::path& path) {
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

std::string ContentOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

PointStore::PointStore(const std::string& path) : path_(path) {
  const std::filesystem::path file = std::filesystem::u8path(path);
  std::error_code error;
  if (std::filesystem::exists(file, error) && !std::filesystem::is_regular_file(file, error)) {
    throw session::InputError(path, "is no plain file");
  }
  const std::string content = ContentOf(file);
  const bool begun = PointHeader().compare(0, content.size(), content) != 0 &&
                     content.compare(0, PointHeader().size(), PointHeader()) != 0;
  if (begun) throw session::InputError(path, "holds something else than points; it is left alone");
  file_.reset(OpenForAppending(file));
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
