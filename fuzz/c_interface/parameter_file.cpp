// The parameter file: the entries, results and bytes of the class, which writes beside it.

#include <iterator>

#include "fuzz/c_interface/calls.h"
#include "support/temporary_folder.h"
#include "tiltpole/persistence/CParameterFile.h"

namespace tiltpole_fuzz {
namespace {

using tiltpole::detail::NarrowText;
using tiltpole::detail::WideText;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

constexpr const wchar_t* kNames[] = {L"one", L"two", L"", L"none/a"};
constexpr int kFiles = 2;  // the names behind them cannot be written

struct Folders {
  TemporaryFolder of_c;
  TemporaryFolder of_plain;
};

const Folders& Both() {
  static const Folders folders;
  return folders;
}

class Beside final : public Player {
 public:
  Beside() {
    for (int i = 0; i < kFiles; ++i) Fill(i, "[a]1\r\n");
    Renew(true);
  }
  ~Beside() override { tiltpole_parameter_file_destroy(handle_); }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void Step(Bytes& bytes, Shared& /*shared*/) override {
    switch (bytes.Byte() % 8) {
      case 0:
        return Renew(bytes.Byte() % 8 != 1);
      case 1:
        return Open(bytes, true);
      case 2:
        return Open(bytes, false);
      case 3:
        return Close();
      case 4:
        return ReadNumbers(bytes);
      case 5:
        return ReadText(bytes);
      case 6:
        Renew(true);  // which closes the file that is to be changed
        return Fill(bytes.Byte() % kFiles, bytes.Text(bytes.Byte()));
      default:
        return Write(bytes);
    }
  }

 private:
  static void Fill(int file, const std::string& content) {
    WriteBytes(Both().of_c / kNames[file], content);
    WriteBytes(Both().of_plain / kNames[file], content);
  }

  void Renew(bool there) {
    tiltpole_parameter_file_destroy(handle_);
    handle_ = nullptr;
    plain_ = std::make_unique<tiltpole::CParameterFile>();
    RequireSameFiles();
    tiltpole_parameter_file** handle = there ? &handle_ : nullptr;
    Expect(tiltpole_parameter_file_create(handle), OkUnlessNull({handle}));
  }

  static void RequireSameFiles() {
    for (int i = 0; i < kFiles; ++i) {
      Require(ReadBytes(Both().of_c / kNames[i]) == ReadBytes(Both().of_plain / kNames[i]),
              "the bytes of the class");
    }
  }

  void Open(Bytes& bytes, bool for_write) {
    const wchar_t* name = kNames[bytes.Byte() % std::size(kNames)];
    const std::string path = NarrowText(Both().of_c / name);
    const std::wstring plain_path = Both().of_plain / name;
    const char* given = OrNull(bytes, path.c_str());
    int promised = OkUnlessNull({handle_, given});
    if (promised == TILTPOLE_OK) {
      const int opened =
          for_write ? plain_->OpenForWrite(plain_path) : plain_->OpenForRead(plain_path);
      if (opened != 1) promised = TILTPOLE_FILE_ERROR;
    }
    const auto open =
        for_write ? tiltpole_parameter_file_open_write : tiltpole_parameter_file_open_read;
    Expect(open(handle_, given), promised);
  }

  void Close() {
    int promised = OkUnlessNull({handle_});
    if (promised == TILTPOLE_OK && !plain_->Close()) promised = TILTPOLE_FILE_ERROR;
    Expect(tiltpole_parameter_file_close(handle_), promised);
    if (promised == TILTPOLE_OK) RequireSameFiles();
  }

  static std::string AnyKey(Bytes& bytes) {
    return bytes.Byte() % 4 == 1 ? AnyText(bytes, 120) : std::string("a");
  }

  void ReadNumbers(Bytes& bytes) const {
    const std::string key = AnyKey(bytes);
    const char* given = OrNull(bytes, key.c_str());
    double number = -7.0;
    double* number_taken = OrNull(bytes, &number);
    std::int32_t integer = -7;
    std::int32_t* integer_taken = OrNull(bytes, &integer);
    double plain_number = -7.0;
    std::int32_t plain_integer = -7;
    const bool there = plain_->ReadDouble(WideText(key), plain_number) == 1 &&
                       plain_->ReadInt(WideText(key), plain_integer) == 1;
    const auto promised = [&](const void* taken) {
      const int null = OkUnlessNull({handle_, given, taken});
      return null == TILTPOLE_OK && !there ? TILTPOLE_NOT_FOUND : null;
    };
    Expect(tiltpole_parameter_file_read_double(handle_, given, number_taken),
           promised(number_taken));
    Expect(tiltpole_parameter_file_read_int(handle_, given, integer_taken),
           promised(integer_taken));
    const bool read = promised(&number) == TILTPOLE_OK;
    Require(Same(number, read && number_taken != nullptr ? plain_number : -7.0), "the number");
    Require(integer == (read && integer_taken != nullptr ? plain_integer : -7), "the integer");
  }

  void ReadText(Bytes& bytes) const {
    const std::string key = AnyKey(bytes);
    const char* given = OrNull(bytes, key.c_str());
    std::vector<char> value(bytes.Byte() % 2 == 0 ? 200U : bytes.Byte() % 16U, 'x');
    char* taken = ArrayOrNull(bytes, value);
    std::size_t size = 7;
    std::size_t* size_taken = OrNull(bytes, &size);
    std::wstring plain;
    const bool there = plain_->ReadString(WideText(key), plain) == 1;
    int promised =
        NullArray(taken, value.size()) ? TILTPOLE_NULL_POINTER : OkUnlessNull({handle_, given});
    if (promised == TILTPOLE_OK && !there) promised = TILTPOLE_NOT_FOUND;
    Expect(tiltpole_parameter_file_read_string(handle_, given, taken, value.size(), size_taken),
           promised);
    const std::string whole = NarrowText(plain);
    const bool told = promised == TILTPOLE_OK && size_taken != nullptr;
    Require(size == (told ? whole.size() : 7), "the size of the whole value");
    if (promised == TILTPOLE_OK && !value.empty()) RequireWhatFits(value, whole);
  }

  static void RequireWhatFits(const std::vector<char>& value, const std::string& whole) {
    constexpr std::size_t kLongestCharacter = 4;
    Require(std::memchr(value.data(), '\0', value.size()) != nullptr, "a zero byte ends a value");
    const std::string taken = value.data();
    Require(whole.compare(0, taken.size(), taken) == 0, "the beginning of the value");
    Require(taken.size() == whole.size() || taken.size() + kLongestCharacter >= value.size(),
            "as much of the value as there is room for");
    Require(NarrowText(WideText(taken)) == taken, "no character is cut in two");
  }

  void Write(Bytes& bytes) {
    const std::string key = AnyKey(bytes);
    const std::wstring wide_key = WideText(key);
    const char* given = OrNull(bytes, key.c_str());
    int promised = OkUnlessNull({handle_, given});
    if (promised == TILTPOLE_OK && !plain_->IsOpen()) promised = TILTPOLE_FILE_ERROR;
    const bool writes = promised == TILTPOLE_OK;
    switch (bytes.Byte() % 3) {
      case 0: {
        const double value = bytes.AnyDouble();
        Expect(tiltpole_parameter_file_write_double(handle_, given, value), promised);
        if (writes) plain_->WriteDouble(wide_key, value);
        return;
      }
      case 1: {
        const std::int32_t value = bytes.AnyInt();
        Expect(tiltpole_parameter_file_write_int(handle_, given, value), promised);
        if (writes) plain_->WriteInt(wide_key, value);
        return;
      }
      default: {
        const std::string value = AnyText(bytes, 200);
        Expect(tiltpole_parameter_file_write_string(handle_, given, nullptr),
               TILTPOLE_NULL_POINTER);
        Expect(tiltpole_parameter_file_write_string(handle_, given, value.c_str()), promised);
        if (writes) plain_->WriteString(wide_key, WideText(value));
      }
    }
  }

  tiltpole_parameter_file* handle_ = nullptr;
  std::unique_ptr<tiltpole::CParameterFile> plain_;
};

}  // namespace

std::unique_ptr<Player> ParameterFilePlayer() { return std::make_unique<Beside>(); }

}  // namespace tiltpole_fuzz
