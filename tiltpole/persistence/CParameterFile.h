#pragma once

/// @file
/// The small text file in which calibration parameters are kept between runs.

#include <cstdint>
#include <string>
#include <string_view>

#include "tiltpole/export.h"
#include "tiltpole/platform/file.h"

namespace tiltpole {

/// A text file of entries, a line each: a key in square brackets, its value right behind it, CR LF.
///
///     [MagneticA.a]1.0000000000
///
/// There is no header, no section and no byte-order mark. The text is UTF-8 on every target; keys
/// and numbers are ASCII, so any tool for narrow text reads them. Numbers are written and read the
/// same way whatever the process's locale is.
///
/// Reading: OpenForRead loads the whole file and closes it; then the Read operations look entries
/// up in memory, in any order, any number of times. Whatever is no entry (comments, blank lines,
/// entries of others) is passed over. Looking up costs one pass over the text.
///
/// Writing: OpenForWrite, the Write operations in the order of the lines, Close. Write errors show
/// in the result of Close alone. OpenForReplace and Replace take the place of the first and the
/// last where the old content must not be lost to a power cut or a full disk.
///
/// Keys, string values and paths end at a zero character, if they hold one. Nothing throws, but for
/// std::bad_alloc.
class TILTPOLE_EXPORT CParameterFile : public PlatformFile {
 public:
  /// No file is open and the text is empty.
  CParameterFile() = default;
  /// Closes a file that is still open. What was begun with OpenForReplace and not finished leaves
  /// the old file as it was.
  ~CParameterFile();

  /// Loads the file and closes it. Its text ends at the first zero byte, if there is one; bytes
  /// that are no UTF-8 become U+FFFD.
  ///
  /// @param[in] path  the full path
  /// @return 1 if the file exists and was loaded; else 0 (missing, a folder, not permitted, no
  ///         memory for its bytes), and a text loaded before stays
  /// @throw std::bad_alloc  without memory for its characters; a text loaded before stays
  int OpenForRead(const std::wstring& path);

  /// Opens the file for writing. One that exists is emptied at once, and Close does not wait for
  /// the medium; so a power cut from here on until the system has brought the lines there, which
  /// can be half a minute after Close, can leave an empty file or one cut in a line.
  ///
  /// @param[in] path  the full path; no folder is created
  /// @return 1 if the file was created or emptied and is open, else 0
  int OpenForWrite(const std::wstring& path);

  /// Begins to write a file that takes the place of the one at @p path when Replace is called. It
  /// is written beside it, under its name with ".new" appended.
  ///
  /// @param[in] path  the full path
  /// @return 1 if the file beside it was created and is open, else 0
  int OpenForReplace(const std::wstring& path);

  /// Brings what was written since OpenForReplace onto the medium and puts it in the place of the
  /// old file, in one step. Waits for the medium.
  ///
  /// @return 1 when the new file stands at the path, whole; else 0 (a full disk, no permission),
  ///         and the old file is as it was
  int Replace();

  /// Looks up an entry. The first occurrence of the bracketed key counts, wherever it stands in a
  /// line; capital and small letters differ. The value runs to the next carriage return and is
  /// taken as it stands, blanks included.
  ///
  /// @param[in] key     without brackets
  /// @param[out] value  the value; unchanged where the result is 0
  /// @return 1 if the entry is there and has a value; 0 if it is missing, empty, or stands on a
  ///         last line that no carriage return ends
  int ReadString(const std::wstring& key, std::wstring& value) const;

  /// Looks up an entry as ReadString does and reads its value as a decimal integer, as wcstol does
  /// in the C locale: leading white space is skipped, the number ends at the first sign that is no
  /// digit. Beyond 32 bits the value is the nearest end of the range.
  ///
  /// @param[out] value  0 where the text starts with no number; unchanged where the result is 0
  /// @return as ReadString: 1 also for text that is no number
  int ReadInt(const std::wstring& key, std::int32_t& value) const;

  /// Looks up an entry as ReadString does and reads its value as a number, as wcstod does in the C
  /// locale: decimal or hexadecimal, "inf" and "nan" too.
  ///
  /// @param[out] value  0.0 where the text starts with no number; unchanged where the result is 0
  /// @return as ReadString: 1 also for text that is no number
  int ReadDouble(const std::wstring& key, double& value) const;

  /// Appends the line "[key]value".
  ///
  /// Every line written is limited to 99 bytes: a longer one keeps its first 99 (less where that
  /// would cut a character in two), without its CR LF, so that the next entry follows on the same
  /// line. Only values of 60 digits and more, long strings and long keys can come that far.
  void WriteString(const std::wstring& key, const std::wstring& value);

  /// Appends the line "[key]value", the value in decimal; see WriteString for long lines.
  void WriteInt(const std::wstring& key, std::int32_t value);

  /// Appends the line "[key]value", the value in fixed notation with ten digits after the point,
  /// without an exponent: values below 5e-11 do not survive. See WriteString for long lines.
  void WriteDouble(const std::wstring& key, double value);

 private:
  // A file opened past the operations above would not be the one that Replace means.
  using PlatformFile::Create;
  using PlatformFile::OpenExisting;
  using PlatformFile::Read;

  void AbandonReplacement();
  std::wstring_view FindValue(const std::wstring& key) const;
  void WriteLine(const std::wstring& key, std::wstring_view value);

  std::wstring text_;
  std::wstring replaced_path_;  // empty unless a replacement is under way
  std::wstring path_beside_;
};

}  // namespace tiltpole
