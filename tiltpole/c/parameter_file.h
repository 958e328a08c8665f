#ifndef TILTPOLE_C_PARAMETER_FILE_H
#define TILTPOLE_C_PARAMETER_FILE_H

/// @file
/// The text file of entries in which parameters are kept; see tiltpole::CParameterFile.
///
/// The parameters of a pole are read and written whole by tiltpole_position_read() and
/// tiltpole_position_save(); this is for a host's own entries.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// A parameter file that is read from memory or open for writing.
typedef struct tiltpole_parameter_file tiltpole_parameter_file;

/// Starts without a file. The handle is the caller's to destroy.
TILTPOLE_C_API int tiltpole_parameter_file_create(tiltpole_parameter_file** file);
/// Closes a file that is still open, and gives the handle back; null does nothing.
TILTPOLE_C_API void tiltpole_parameter_file_destroy(tiltpole_parameter_file* file);

/// Loads a file whole and closes it; then entries are looked up in memory.
TILTPOLE_C_API int tiltpole_parameter_file_open_read(tiltpole_parameter_file* file,
                                                     const char* path);
/// Opens a file for writing and empties it.
TILTPOLE_C_API int tiltpole_parameter_file_open_write(tiltpole_parameter_file* file,
                                                      const char* path);
/// Closes the file; a write error of any entry shows here.
TILTPOLE_C_API int tiltpole_parameter_file_close(tiltpole_parameter_file* file);

/// Looks up an entry; TILTPOLE_NOT_FOUND when it is missing or empty. Text that is no number reads
/// as 0.
TILTPOLE_C_API int tiltpole_parameter_file_read_double(const tiltpole_parameter_file* file,
                                                       const char* key, double* value);
/// @copydoc tiltpole_parameter_file_read_double
TILTPOLE_C_API int tiltpole_parameter_file_read_int(const tiltpole_parameter_file* file,
                                                    const char* key, int32_t* value);
/// Looks up an entry.
/// @param[out] value  filled with what fits of the value and a zero byte, null for none
/// @param[in] capacity  the bytes that value has room for
/// @param[out] size     the bytes of the whole value, without the zero byte; may be null
TILTPOLE_C_API int tiltpole_parameter_file_read_string(const tiltpole_parameter_file* file,
                                                       const char* key, char* value,
                                                       size_t capacity, size_t* size);

/// Appends an entry to a file that is open for writing.
TILTPOLE_C_API int tiltpole_parameter_file_write_double(tiltpole_parameter_file* file,
                                                        const char* key, double value);
/// @copydoc tiltpole_parameter_file_write_double
TILTPOLE_C_API int tiltpole_parameter_file_write_int(tiltpole_parameter_file* file, const char* key,
                                                     int32_t value);
/// @copydoc tiltpole_parameter_file_write_double
TILTPOLE_C_API int tiltpole_parameter_file_write_string(tiltpole_parameter_file* file,
                                                        const char* key, const char* value);

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
