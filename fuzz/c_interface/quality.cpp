// The quality of a calibration: the reports of the library.

#include <algorithm>

#include "fuzz/c_interface/calls.h"
#include "fuzz/c_interface/expected_quality.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/c/detail/tip.h"
#include "tiltpole/platform/text.h"
#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/parameter_check.h"

namespace tiltpole_fuzz {
namespace {

using tiltpole::detail::FromC;
using tiltpole::detail::NarrowText;
using tiltpole::detail::ToC;
using tiltpole::detail::WideText;

using Samples = std::vector<tiltpole_sample>;

// Both turns of a call, with the samples known to the library.
struct Turns {
  Turns(Bytes& bytes, Shared& shared)
      : horizontal(shared.samples[0]),
        vertical(shared.samples[1]),
        h(ArrayOrNull(bytes, horizontal)),
        v(ArrayOrNull(bytes, vertical)),
        null(NullArray(h, horizontal.size()) || NullArray(v, vertical.size())) {}

  Samples& horizontal;
  Samples& vertical;
  const tiltpole_sample* h;
  const tiltpole_sample* v;
  bool null;
};

auto FromC(const Samples& samples) { return FromC(samples.data(), samples.size()); }

class Beside final : public Player {
 public:
  Beside() = default;
  ~Beside() override { tiltpole_calibration_quality_destroy(handle_); }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void Step(Bytes& bytes, Shared& shared) override {
    switch (bytes.Byte() % 8) {
      case 0:
        return Judge(bytes, shared);
      case 1:
        return JudgeFailed(bytes, shared);
      case 2:
        return Check(bytes, shared);
      case 3:
        return Summary(bytes);
      case 4:
        return Magnetometer(AnyOfTwo(bytes));
      case 5:
        return HeadingErrors(bytes);
      case 6:
        return Missing(AnyOfTwo(bytes), AnyIndex(bytes));
      default:
        return Reason(AnyIndex(bytes));
    }
  }

 private:
  // A report takes the place of the one before.
  tiltpole_calibration_quality** Forget(Bytes& bytes) {
    tiltpole_calibration_quality_destroy(handle_);
    handle_ = nullptr;
    plain_ = {};
    return OrNull(bytes, &handle_);
  }

  void Judge(Bytes& bytes, Shared& shared) {
    const Turns turns(bytes, shared);
    const tiltpole_correction* a = OrNull(bytes, &shared.correction[0]);
    const tiltpole_correction* b = OrNull(bytes, &shared.correction[1]);
    const tiltpole_translation* translation = OrNull(bytes, &shared.translation);
    tiltpole_calibration_quality** report = Forget(bytes);
    const int promised =
        turns.null ? TILTPOLE_NULL_POINTER : OkUnlessNull({a, b, translation, report});
    Expect(tiltpole_judge_calibration(turns.h, turns.horizontal.size(), turns.v,
                                      turns.vertical.size(), a, b, translation, report),
           promised);
    if (promised != TILTPOLE_OK) return;
    plain_ = tiltpole::JudgeCalibration(FromC(turns.horizontal), FromC(turns.vertical), FromC(*a),
                                        FromC(*b), FromC(*translation));
  }

  void JudgeFailed(Bytes& bytes, Shared& shared) {
    const Turns turns(bytes, shared);
    std::vector<std::string> texts;
    for (int i = bytes.Between(0, 3); i > 0; --i) texts.push_back(AnyText(bytes, 60));
    std::vector<const char*> messages;
    messages.reserve(texts.size());
    for (const auto& text : texts) messages.push_back(OrNull(bytes, text.c_str()));
    const char* const* given = ArrayOrNull(bytes, messages);
    tiltpole_calibration_quality** report = Forget(bytes);
    const bool null =
        turns.null || report == nullptr || NullArray(given, messages.size()) ||
        std::any_of(messages.begin(), messages.end(), [](auto* text) { return text == nullptr; });
    Expect(tiltpole_judge_failed_calibration(turns.h, turns.horizontal.size(), turns.v,
                                             turns.vertical.size(), given, messages.size(), report),
           null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
    if (null) return;
    std::vector<std::wstring> wide;
    wide.reserve(texts.size());
    for (const auto& text : texts) wide.push_back(WideText(text));
    plain_ = tiltpole::JudgeFailedCalibration(FromC(turns.horizontal), FromC(turns.vertical), wide);
    Require(!plain_.Reasons.empty(), "a failure has a reason");
  }

  void Check(Bytes& bytes, const Shared& shared) {
    auto samples = SomeOf(bytes, shared);
    const tiltpole_sample* given = ArrayOrNull(bytes, samples);
    const tiltpole_correction* a = OrNull(bytes, &shared.correction[0]);
    const tiltpole_correction* b = OrNull(bytes, &shared.correction[1]);
    tiltpole_calibration_quality** report = Forget(bytes);
    const int promised =
        NullArray(given, samples.size()) ? TILTPOLE_NULL_POINTER : OkUnlessNull({a, b, report});
    Expect(tiltpole_check_parameters(given, samples.size(), a, b, report), promised);
    if (promised != TILTPOLE_OK) return;
    plain_.Calibrated = true;
    plain_.Result = tiltpole::Verdict::Good;
    plain_.Reasons = tiltpole::CheckParameters(FromC(samples), FromC(*a), FromC(*b));
    for (const auto& reason : plain_.Reasons) {
      plain_.Result = std::max(plain_.Result, reason.Weight);
    }
  }

  void Summary(Bytes& bytes) const {
    tiltpole_quality_summary summary = {};
    tiltpole_tip_options options = {};
    tiltpole_quality_summary* taken = OrNull(bytes, &summary);
    const int promised = OkUnlessNull({handle_, taken});
    Expect(tiltpole_quality_summary_of(handle_, taken), promised);
    Expect(tiltpole_quality_tip_options(handle_, &options), OkUnlessNull({handle_}));
    if (promised != TILTPOLE_OK) return;
    Require(Same(options, ToC(TipOptionsFrom(plain_))), "the options of the library");
    Require(Same(summary, ExpectedSummary(plain_)), "the summary of the library");
  }

  int Promised(int which, std::size_t index, std::size_t size) const {
    if (handle_ == nullptr) return TILTPOLE_NULL_POINTER;
    if (!IsOneOfTwo(which)) return TILTPOLE_BAD_ARGUMENT;
    return index < size ? TILTPOLE_OK : TILTPOLE_NOT_FOUND;
  }

  const tiltpole::MagnetometerQuality& Of(int magnetometer) const {
    return magnetometer == TILTPOLE_MAGNETOMETER_B ? plain_.B : plain_.A;
  }

  void Magnetometer(int magnetometer) const {
    tiltpole_magnetometer_quality of = {};
    const int promised = Promised(magnetometer, 0, 1);
    Expect(tiltpole_quality_magnetometer(handle_, magnetometer, &of), promised);
    if (promised != TILTPOLE_OK) return;
    Require(Same(of, ExpectedMagnetometer(Of(magnetometer))), "the figures of the library");
  }

  void HeadingErrors(Bytes& bytes) const {
    const int magnetometer = AnyOfTwo(bytes);
    std::vector<tiltpole_heading_error> errors(bytes.Byte() % 100U);
    const std::size_t capacity = errors.size();
    std::size_t count = 0;
    tiltpole_heading_error* taken = ArrayOrNull(bytes, errors);
    const int promised =
        NullArray(taken, capacity) ? TILTPOLE_NULL_POINTER : Promised(magnetometer, 0, 1);
    Expect(tiltpole_quality_heading_errors(handle_, magnetometer, taken, capacity, &count),
           promised);
    if (promised != TILTPOLE_OK) return;
    const auto& plain = Of(magnetometer).Heading.ByHeading;
    Require(count == plain.size(), "how many directions there are");
    for (std::size_t i = 0; i < std::min(capacity, count); ++i) {
      Require(Same(errors[i], {plain[i].Heading, plain[i].Error, plain[i].Deviation}),
              "the errors of the library");
    }
  }

  void Missing(int turn, std::size_t index) const {
    const auto& missing =
        turn == TILTPOLE_TURN_VERTICAL ? plain_.Vertical.Missing : plain_.Horizontal.Missing;
    tiltpole_azimuth_range range = {};
    const int promised = Promised(turn, index, missing.size());
    Expect(tiltpole_quality_missing_at(handle_, turn, index, &range), promised);
    if (promised != TILTPOLE_OK) return;
    Require(Same(range, {missing[index].From, missing[index].To}), "the gap of the library");
  }

  void Reason(std::size_t index) const {
    tiltpole_quality_reason reason = {};
    const int promised = Promised(0, index, plain_.Reasons.size());
    Expect(tiltpole_quality_reason_at(handle_, index, &reason), promised);
    if (promised != TILTPOLE_OK) return;
    const auto& plain = plain_.Reasons[index];
    Require(reason.code == static_cast<int>(plain.Code) &&
                reason.weight == static_cast<int>(plain.Weight) &&
                reason.sentence == NarrowText(plain.Sentence),
            "the reason of the library");
  }

  tiltpole_calibration_quality* handle_ = nullptr;
  tiltpole::CalibrationQuality plain_;
};

}  // namespace

std::unique_ptr<Player> QualityPlayer() { return std::make_unique<Beside>(); }

}  // namespace tiltpole_fuzz
