#include "tiltpole/c/parameter_file.h"

#include <cstring>
#include <string>

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/platform/text.h"

using namespace tiltpole::detail;

struct tiltpole_parameter_file {
  tiltpole::CParameterFile object;
};

namespace {

int NotThere() { return Failed(TILTPOLE_NOT_FOUND, "the file has no such entry, or it is empty"); }

template <class Operation>
int Written(tiltpole_parameter_file* file, const char* key, const Operation& operation) {
  return Guarded([&] {
    if (AnyNull(file, key)) return NullPointer();
    if (!file->object.IsOpen()) return Failed(TILTPOLE_FILE_ERROR, "no file is open for writing");
    operation(WideText(key));
    return static_cast<int>(TILTPOLE_OK);
  });
}

}  // namespace

int tiltpole_parameter_file_create(tiltpole_parameter_file** file) { return Create(file); }

void tiltpole_parameter_file_destroy(tiltpole_parameter_file* file) { delete file; }

int tiltpole_parameter_file_open_read(tiltpole_parameter_file* file, const char* path) {
  return Guarded([&] {
    if (AnyNull(file) || AnyNull(path)) return NullPointer();
    if (file->object.OpenForRead(WideText(path)) == 1) return static_cast<int>(TILTPOLE_OK);
    return Failed(TILTPOLE_FILE_ERROR, "the file could not be read");
  });
}

int tiltpole_parameter_file_open_write(tiltpole_parameter_file* file, const char* path) {
  return Guarded([&] {
    if (AnyNull(file) || AnyNull(path)) return NullPointer();
    if (file->object.OpenForWrite(WideText(path)) == 1) return static_cast<int>(TILTPOLE_OK);
    return Failed(TILTPOLE_FILE_ERROR, "the file could not be opened for writing");
  });
}

int tiltpole_parameter_file_close(tiltpole_parameter_file* file) {
  return Guarded([&] {
    if (AnyNull(file)) return NullPointer();
    if (file->object.Close()) return static_cast<int>(TILTPOLE_OK);
    return Failed(TILTPOLE_FILE_ERROR, "not every entry could be written");
  });
}

int tiltpole_parameter_file_read_double(const tiltpole_parameter_file* file, const char* key,
                                        double* value) {
  return Guarded([&] {
    if (AnyNull(file) || AnyNull(key) || AnyNull(value)) return NullPointer();
    return file->object.ReadDouble(WideText(key), *value) == 1 ? TILTPOLE_OK : NotThere();
  });
}

int tiltpole_parameter_file_read_int(const tiltpole_parameter_file* file, const char* key,
                                     int32_t* value) {
  return Guarded([&] {
    if (AnyNull(file) || AnyNull(key) || AnyNull(value)) return NullPointer();
    return file->object.ReadInt(WideText(key), *value) == 1 ? TILTPOLE_OK : NotThere();
  });
}

int tiltpole_parameter_file_read_string(const tiltpole_parameter_file* file, const char* key,
                                        char* value, size_t capacity, size_t* size) {
  return Guarded([&] {
    if (AnyNull(file) || AnyNull(key) || NullArray(value, capacity)) return NullPointer();
    std::wstring wide;
    if (file->object.ReadString(WideText(key), wide) != 1) return NotThere();
    const std::string narrow = NarrowText(wide);
    if (size != nullptr) *size = narrow.size();
    if (capacity != 0) {
      const auto fitting = CutNarrowText(narrow, capacity - 1);
      std::memcpy(value, fitting.data(), fitting.size());
      value[fitting.size()] = '\0';
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_parameter_file_write_double(tiltpole_parameter_file* file, const char* key,
                                         double value) {
  return Written(file, key, [&](const std::wstring& k) { file->object.WriteDouble(k, value); });
}

int tiltpole_parameter_file_write_int(tiltpole_parameter_file* file, const char* key,
                                      int32_t value) {
  return Written(file, key, [&](const std::wstring& k) { file->object.WriteInt(k, value); });
}

int tiltpole_parameter_file_write_string(tiltpole_parameter_file* file, const char* key,
                                         const char* value) {
  if (AnyNull(value)) return NullPointer();
  return Written(file, key,
                 [&](const std::wstring& k) { file->object.WriteString(k, WideText(value)); });
}
