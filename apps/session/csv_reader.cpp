#include "apps/session/csv_reader.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>

#include "apps/session/input_error.h"
#include "apps/session/number_text.h"

namespace tiltpole::session {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 16;
// A longer line is no table but a file of some other kind; without a limit it would fill the
// memory before anyone could say so.
constexpr std::size_t kLongestLine = std::size_t{1} << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

CsvReader::CsvReader(std::istream& in, std::string name)
    : in_(in), name_(std::move(name)), buffer_(kBufferSize) {
  do {
    if (!NextLine()) throw InputError(name_, "is empty; expected a header row");
    if (line_number_ == 1 && line_.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
      line_.erase(0, kByteOrderMark.size());
    }
  } while (Trimmed(line_).empty());
  header_line_ = line_number_;
  SplitLine();
  for (const auto field : fields_) columns_.emplace_back(Trimmed(field));
  CheckHeader();
}

void CsvReader::CheckHeader() const {
  std::set<std::string_view> seen;
  for (const auto& column : columns_) {
    if (column.empty()) FailLine("a column has no name; expected a name for every column");
    if (!seen.insert(column).second) FailLine("two columns are called " + Quoted(column));
  }
}

std::optional<std::size_t> CsvReader::Find(std::string_view column) const {
  const auto found = std::find(columns_.begin(), columns_.end(), column);
  if (found == columns_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - columns_.begin());
}

std::vector<std::size_t> CsvReader::Require(const std::vector<std::string>& columns) const {
  std::vector<std::size_t> places;
  std::string missing;
  std::string expected;
  for (const auto& column : columns) {
    const auto place = Find(column);
    if (place) places.push_back(*place);
    if (!place) missing += (missing.empty() ? "" : ", ") + column;
    expected += (expected.empty() ? "" : ", ") + column;
  }
  if (missing.empty()) return places;
  const bool semicolons = columns_.size() == 1 && columns_[0].find(';') != std::string::npos;
  throw InputError(name_, header_line_, missing,
                   "missing in the header; expected the columns " + expected +
                       (semicolons ? ", separated by commas, not semicolons" : ""));
}

bool CsvReader::Refill() {
  in_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  if (in_.bad()) throw InputError(name_, "cannot be read to its end");
  buffer_at_ = 0;
  buffer_end_ = static_cast<std::size_t>(in_.gcount());
  bytes_read_ += buffer_end_;
  return buffer_end_ > 0;
}

bool CsvReader::NextLine() {
  line_.clear();
  bool any = false;
  while (buffer_at_ < buffer_end_ || Refill()) {
    any = true;
    const char* const begin = buffer_.data() + buffer_at_;
    const std::size_t there = buffer_end_ - buffer_at_;
    const auto* const end = static_cast<const char*>(std::memchr(begin, '\n', there));
    const std::size_t taken = end != nullptr ? static_cast<std::size_t>(end - begin) : there;
    line_.append(begin, taken);
    buffer_at_ += taken + (end != nullptr ? 1 : 0);
    if (line_.size() > kLongestLine) {
      ++line_number_;
      FailLine("the line is longer than 1 MB; expected a CSV file");
    }
    if (end != nullptr) break;
  }
  if (!any) return false;
  ++line_number_;
  if (!line_.empty() && line_.back() == '\r') line_.pop_back();
  return true;
}

bool CsvReader::Next() {
  do {
    if (!NextLine()) return false;
  } while (Trimmed(line_).empty());
  SplitLine();
  if (fields_.size() != columns_.size()) {
    FailLine("the row has " + std::to_string(fields_.size()) + " fields; expected " +
             std::to_string(columns_.size()) + " as in the header");
  }
  return true;
}

void CsvReader::SplitLine() {
  fields_.clear();
  const std::string_view line = line_;
  std::size_t at = 0;
  while (true) {
    if (at < line.size() && line[at] == '"') {
      at = SplitQuoted(at);
    } else {
      const std::size_t end = std::min(line.find(',', at), line.size());
      fields_.push_back(line.substr(at, end - at));
      at = end;
    }
    if (at == line.size()) return;
    ++at;
  }
}

// Takes the quotes off where the field stands, so that a row needs no storage of its own.
std::size_t CsvReader::SplitQuoted(std::size_t at) {
  const std::size_t begin = at;
  std::size_t to = at;
  for (++at; at < line_.size(); ++at) {
    if (line_[at] == '"') {
      ++at;
      if (at == line_.size() || line_[at] != '"') {
        if (at < line_.size() && line_[at] != ',') {
          FailLine("text follows the closing quote of a field; expected a comma");
        }
        fields_.push_back(std::string_view(line_).substr(begin, to - begin));
        return at;
      }
    }
    line_[to++] = line_[at];
  }
  FailLine("a quoted field does not end on its line; expected a closing quote");
}

double CsvReader::Number(std::size_t column) const {
  const auto number = ParseNumber(fields_[column]);
  if (!number) {
    Fail(column, Quoted(fields_[column]) + " is no number; expected a finite decimal number");
  }
  return *number;
}

void CsvReader::Fail(std::size_t column, std::string_view message) const {
  throw InputError(name_, line_number_, columns_[column], message);
}

void CsvReader::FailLine(std::string_view message) const {
  throw InputError(name_, line_number_, message);
}

}  // namespace tiltpole::session
