#pragma once

// Reads CSV with a header row, a row at a time in constant memory.

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tiltpole::session {

/// A CSV file whose first row names the columns.
///
/// Fields are separated by commas; one that holds commas or quotes is quoted, and a quote within
/// it doubled. Lines end with LF or CR LF; a byte-order mark at the start and empty lines, above
/// the header too, are passed over. Whatever is wrong is thrown as InputError.
class CsvReader {
 public:
  /// Reads the header.
  /// @param in    stays the caller's, and must outlive the reader
  /// @param name  what messages call the file
  CsvReader(std::istream& in, std::string name);

  /// The names of the columns, as the header has them.
  const std::vector<std::string>& Columns() const { return columns_; }
  std::optional<std::size_t> Find(std::string_view column) const;
  /// The places of columns that must be there; the message names all that are missing.
  std::vector<std::size_t> Require(const std::vector<std::string>& columns) const;

  /// Goes to the next row; false at the end of the file.
  bool Next();

  /// The text of a field of this row; valid until the next row.
  std::string_view Field(std::size_t column) const { return fields_[column]; }
  /// The finite number in a field of this row.
  double Number(std::size_t column) const;

  /// Says what is wrong with a field of this row.
  [[noreturn]] void Fail(std::size_t column, std::string_view message) const;

  const std::string& Name() const { return name_; }
  /// The line of this row; lines count from 1.
  std::size_t Line() const { return line_number_; }
  /// How many bytes have been read, for showing progress.
  std::uint64_t BytesRead() const { return bytes_read_; }

 private:
  bool Refill();
  bool NextLine();
  void SplitLine();
  std::size_t SplitQuoted(std::size_t at);
  void CheckHeader() const;
  [[noreturn]] void FailLine(std::string_view message) const;

  std::istream& in_;
  std::string name_;
  std::vector<char> buffer_;
  std::size_t buffer_at_ = 0;
  std::size_t buffer_end_ = 0;
  std::uint64_t bytes_read_ = 0;
  std::string line_;
  std::size_t line_number_ = 0;
  std::size_t header_line_ = 0;
  std::vector<std::string_view> fields_;
  std::vector<std::string> columns_;
};

}  // namespace tiltpole::session
