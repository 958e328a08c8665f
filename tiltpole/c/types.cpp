#include "tiltpole/c/types.h"

#include <cstring>
#include <exception>
#include <string>

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/platform/message_box.h"
#include "tiltpole/platform/text.h"
#include "tiltpole/quality/rigorous_tip.h"
#include "tiltpole/version.h"

namespace tiltpole::detail {
namespace {

// Of fixed size: a thread that has no memory left must still be able to say so.
thread_local char last_error[160] = "";

}  // namespace

int Failed(int result, const char* sentence) noexcept {
  std::strncpy(last_error, sentence, sizeof last_error - 1);
  return result;
}

// Called while the exception is being handled.
int FailedUnexpectedly() noexcept {
  try {
    throw;
  } catch (const std::exception& exception) {
    return Failed(TILTPOLE_UNEXPECTED_ERROR, exception.what());
  } catch (...) {
    return Failed(TILTPOLE_UNEXPECTED_ERROR, "something unknown was thrown");
  }
}

namespace {

void ShowThrough(tiltpole_message_handler handler, void* user, const std::wstring& text,
                 const std::wstring& title, MessageIcon icon) {
  const int c_icon = icon == MessageIcon::Stop ? TILTPOLE_ICON_STOP : TILTPOLE_ICON_EXCLAMATION;
  std::string narrow_text;
  std::string narrow_title;
  try {
    narrow_text = NarrowText(text);
    narrow_title = NarrowText(title);
  } catch (const std::bad_alloc&) {
    handler("A fit failed, and there is no memory to say which.", "Warning", c_icon, user);
    return;
  }
  handler(narrow_text.c_str(), narrow_title.c_str(), c_icon, user);
}

}  // namespace
}  // namespace tiltpole::detail

using namespace tiltpole::detail;

const char* tiltpole_version(void) { return TILTPOLE_VERSION; }

const char* tiltpole_last_error(void) { return last_error; }

int tiltpole_set_message_handler(tiltpole_message_handler handler, void* user) {
  return Guarded([&] {
    if (handler == nullptr) {
      tiltpole::SetMessageBoxHandler(nullptr);
    } else {
      tiltpole::SetMessageBoxHandler([handler, user](const std::wstring& text,
                                                     const std::wstring& title,
                                                     tiltpole::MessageIcon icon) {
        ShowThrough(handler, user, text, title, icon);
      });
    }
    return TILTPOLE_OK;
  });
}

int tiltpole_sample_default(tiltpole_sample* sample) {
  if (AnyNull(sample)) return NullPointer();
  *sample = ToC(tiltpole::PoseSensorData());
  return TILTPOLE_OK;
}

int tiltpole_correction_default(tiltpole_correction* correction) {
  if (AnyNull(correction)) return NullPointer();
  *correction = ToC(tiltpole::Incline_MagneticCorrectParameter());
  return TILTPOLE_OK;
}

int tiltpole_correct_samples(tiltpole_sample* samples, size_t count,
                             const tiltpole_correction* correction_a,
                             const tiltpole_correction* correction_b) {
  if (AnyNull(correction_a, correction_b) || NullArray(samples, count)) return NullPointer();
  const auto a = FromC(*correction_a);
  const auto b = FromC(*correction_b);
  for (size_t i = 0; i < count; ++i) {
    samples[i] = ToC(tiltpole::CorrectSample(FromC(samples[i]), a, b));
  }
  return TILTPOLE_OK;
}
