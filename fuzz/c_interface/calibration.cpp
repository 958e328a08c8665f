// The calibration: the fits and the messages of the class.

#include <string>

#include "fuzz/c_interface/calls.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace tiltpole_fuzz {
namespace {

using tiltpole::detail::FromC;
using tiltpole::detail::ToC;

constexpr std::size_t kMostSamples = 120;
constexpr int kMostFits = 2;  // which take their time

using Messages = std::vector<std::string>;

void Keep(const char* text, const char* title, int icon, void* user) {
  Require(IsOneOfTwo(icon), "a message has one of two icons");
  static_cast<Messages*>(user)->push_back(std::string(title) + ": " + text);
}

class Beside final : public Player {
 public:
  Beside() { Renew(true); }
  ~Beside() override { tiltpole_calibration_destroy(handle_); }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void Step(Bytes& bytes, Shared& shared) override {
    switch (bytes.Byte() % 8) {
      case 0:
        return Renew(bytes.Byte() % 8 != 1);
      case 1:
        return Clear(AnyOfTwo(bytes));
      case 2:
        return Get(bytes);
      case 3:
        return Adjust();
      case 4:
        return Result(bytes, shared);
      default:
        return Add(bytes, shared);
    }
  }

 private:
  void Renew(bool there) {
    tiltpole_calibration_destroy(handle_);
    handle_ = nullptr;
    plain_ = std::make_unique<tiltpole::CInclineSensor_MagneticAdjust>();
    sizes_[0] = sizes_[1] = 0;
    tiltpole_calibration** handle = there ? &handle_ : nullptr;
    Expect(tiltpole_calibration_create(handle), OkUnlessNull({handle}));
  }

  int Promised(int turn) const {
    if (handle_ == nullptr) return TILTPOLE_NULL_POINTER;
    return IsOneOfTwo(turn) ? TILTPOLE_OK : TILTPOLE_BAD_ARGUMENT;
  }

  void Add(Bytes& bytes, const Shared& shared) {
    const int turn = AnyOfTwo(bytes);
    auto samples = SomeOf(bytes, shared);
    if (IsOneOfTwo(turn) && sizes_[turn] + samples.size() > kMostSamples) return;
    const tiltpole_sample* given = ArrayOrNull(bytes, samples);
    const int promised = NullArray(given, samples.size()) ? TILTPOLE_NULL_POINTER : Promised(turn);
    Expect(tiltpole_calibration_add(handle_, turn, given, samples.size()), promised);
    if (promised != TILTPOLE_OK) return;
    sizes_[turn] += samples.size();
    for (const auto& sample : samples) {
      const auto record = FromC(sample);
      turn == TILTPOLE_TURN_HORIZONTAL ? plain_->Horizontal_Add(&record)
                                       : plain_->Vertical_Add(&record);
    }
  }

  void Clear(int turn) {
    Expect(tiltpole_calibration_clear(handle_, turn), Promised(turn));
    if (Promised(turn) != TILTPOLE_OK) return;
    sizes_[turn] = 0;
    turn == TILTPOLE_TURN_HORIZONTAL ? plain_->Horizontal_Clear() : plain_->Vertical_Clear();
  }

  void Get(Bytes& bytes) const {
    const int turn = AnyOfTwo(bytes);
    const std::size_t index = AnyIndex(bytes);
    tiltpole_sample sample = {};
    tiltpole_sample* given = OrNull(bytes, &sample);
    int promised = given == nullptr ? TILTPOLE_NULL_POINTER : Promised(turn);
    if (promised == TILTPOLE_OK && index >= sizes_[turn]) promised = TILTPOLE_NOT_FOUND;
    Expect(tiltpole_calibration_get(handle_, turn, index, given), promised);
    if (promised != TILTPOLE_OK) return;
    tiltpole::PoseSensorData record;
    const int i = static_cast<int>(index);
    const int found = turn == TILTPOLE_TURN_HORIZONTAL ? plain_->Horizontal_Get(i, record)
                                                       : plain_->Vertical_Get(i, record);
    Require(found == 1 && Same(sample, ToC(record)), "the sample that was added");
  }

  void Adjust() {
    if (++fits_ > kMostFits) return;
    if (handle_ == nullptr) {
      return Expect(tiltpole_calibration_adjust(handle_), TILTPOLE_NULL_POINTER);
    }
    Messages shown;
    Expect(tiltpole_set_message_handler(Keep, &shown), TILTPOLE_OK);
    const int plain = plain_->Adjust();
    const Messages expected = shown;
    shown.clear();
    Expect(tiltpole_calibration_adjust(handle_), plain == 1 ? TILTPOLE_OK : TILTPOLE_NO_SOLUTION);
    Require(shown == expected, "the messages of the class");
    Require(shown.size() <= 3 && shown.empty() == (plain == 1), "up to three on failure");
    Expect(tiltpole_set_message_handler(nullptr, nullptr), TILTPOLE_OK);
  }

  void Result(Bytes& bytes, Shared& shared) const {
    tiltpole_correction* a = OrNull(bytes, &shared.correction[0]);
    tiltpole_correction* b = OrNull(bytes, &shared.correction[1]);
    tiltpole_translation* translation = OrNull(bytes, &shared.translation);
    Expect(tiltpole_calibration_result(handle_, a, b, translation), OkUnlessNull({handle_}));
    if (handle_ == nullptr) return;
    Require(a == nullptr || Same(*a, ToC(plain_->GetCorrectPar_A())), "A's correction");
    Require(b == nullptr || Same(*b, ToC(plain_->GetCorrectPar_B())), "B's correction");
    Require(translation == nullptr || Same(*translation, ToC(plain_->GetCoorTrans())),
            "the translation");
  }

  tiltpole_calibration* handle_ = nullptr;
  std::unique_ptr<tiltpole::CInclineSensor_MagneticAdjust> plain_;
  std::size_t sizes_[2] = {0, 0};
  int fits_ = 0;
};

}  // namespace

std::unique_ptr<Player> CalibrationPlayer() { return std::make_unique<Beside>(); }

}  // namespace tiltpole_fuzz
