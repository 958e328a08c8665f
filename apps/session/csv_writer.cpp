#include "apps/session/csv_writer.h"

#include "apps/session/number_text.h"

namespace tiltpole::session {

void CsvWriter::Separate() {
  if (!first_) row_ += ',';
  first_ = false;
}

void CsvWriter::Text(std::string_view text) {
  Separate();
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    row_ += text;
    return;
  }
  row_ += '"';
  for (const char sign : text) {
    if (sign == '"') row_ += '"';
    row_ += sign;
  }
  row_ += '"';
}

void CsvWriter::Number(double value) {
  Separate();
  AppendNumber(row_, value);
}

void CsvWriter::Fixed(double value, int decimals) {
  Separate();
  AppendFixed(row_, value, decimals);
}

void CsvWriter::EndRow() {
  row_ += '\n';
  out_.write(row_.data(), static_cast<std::streamsize>(row_.size()));
  row_.clear();
  first_ = true;
}

}  // namespace tiltpole::session
