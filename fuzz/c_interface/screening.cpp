// The screening: coverage, centre and selections of the class for the turn.

#include <algorithm>
#include <optional>

#include "fuzz/c_interface/calls.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

namespace tiltpole_fuzz {
namespace {

using tiltpole::PoseSensorData;
using tiltpole::PoseSensorDataArray;
using tiltpole::detail::FromC;
using tiltpole::detail::ToC;

constexpr std::size_t kMostRecords = 200;

template <class Plain, int kTurn>
class Beside final : public Player {
 public:
  Beside() { Renew(true); }
  ~Beside() override { tiltpole_screening_destroy(handle_); }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void Step(Bytes& bytes, Shared& shared) override {
    switch (bytes.Byte() % 12) {
      case 0:
        return Renew(bytes.Byte() % 8 != 1);
      case 1:
        return Clear();
      case 2:
        return Coverage(bytes);
      case 3:
        return Center(bytes);
      case 4:
      case 5:
        return Filter();
      case 6:
        return Select(bytes.AnyInt());
      case 7:
        return IsComplete(bytes);
      case 8:
        return CopySamples(bytes, tiltpole_screening_records, records_);
      case 9:
        return CopySelection(bytes);
      default:
        return Add(bytes, shared);
    }
  }

 private:
  void Renew(bool there) {
    tiltpole_screening_destroy(handle_);
    handle_ = nullptr;
    plain_.emplace();
    records_.clear();
    selection_.reset();
    tiltpole_screening** handle = there ? &handle_ : nullptr;
    Expect(tiltpole_screening_create(kTurn, handle), OkUnlessNull({handle}));
    Expect(tiltpole_screening_create(kTurn + 2, handle), TILTPOLE_BAD_ARGUMENT);
  }

  void Add(Bytes& bytes, const Shared& shared) {
    auto samples = SomeOf(bytes, shared);
    if (records_.size() + samples.size() > kMostRecords) return;
    const tiltpole_sample* given = ArrayOrNull(bytes, samples);
    const bool null = handle_ == nullptr || NullArray(given, samples.size());
    Expect(tiltpole_screening_add(handle_, given, samples.size()),
           null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
    if (null) return;
    for (const auto& sample : samples) {
      records_.push_back(new PoseSensorData(FromC(sample)));
      plain_->Add(records_.back());
    }
  }

  void Clear() {
    Expect(tiltpole_screening_clear(handle_), OkUnlessNull({handle_}));
    if (handle_ == nullptr) return;
    plain_->Clear();
    records_.clear();
    selection_.reset();
  }

  void Coverage(Bytes& bytes) const {
    std::int32_t percent = -1;
    std::int32_t covered = -1;
    std::int32_t* percent_taken = OrNull(bytes, &percent);
    std::int32_t* covered_taken = OrNull(bytes, &covered);
    Expect(tiltpole_screening_coverage(handle_, percent_taken),
           OkUnlessNull({handle_, percent_taken}));
    Expect(tiltpole_screening_is_covered(handle_, covered_taken),
           OkUnlessNull({handle_, covered_taken}));
    Require(percent == -1 || percent == plain_->GetRecordRate(), "the coverage of the class");
    Require(covered == -1 || covered == plain_->IsRecordOK(), "covered as the class says");
  }

  void Center(Bytes& bytes) const {
    tiltpole_center center = {};
    tiltpole_center* taken = OrNull(bytes, &center);
    const int promised = OkUnlessNull({handle_, taken});
    Expect(tiltpole_screening_center(handle_, taken), promised);
    if (promised == TILTPOLE_OK) RequireSameCenter();
  }

  void RequireSameCenter() const {
    tiltpole_center center = {};
    Expect(tiltpole_screening_center(handle_, &center), TILTPOLE_OK);
    const auto par = plain_->GetCenterPar();
    Require(Same(center, {par.CenterX, par.CenterY, par.CenterZ, par.Radius, par.Valid, 0}),
            "the centre of the class");
  }

  void Filter() {
    if (handle_ == nullptr) {
      return Expect(tiltpole_screening_filter(handle_), TILTPOLE_NULL_POINTER);
    }
    selection_.reset(plain_->Filter());
    Expect(tiltpole_screening_filter(handle_),
           selection_ != nullptr ? TILTPOLE_OK : TILTPOLE_NO_SOLUTION);
    RequireSameCenter();
  }

  void Select(int wanted) {
    if (handle_ == nullptr) {
      return Expect(tiltpole_screening_select(handle_, wanted), TILTPOLE_NULL_POINTER);
    }
    if (wanted < 1) {
      return Expect(tiltpole_screening_select(handle_, wanted), TILTPOLE_BAD_ARGUMENT);
    }
    const bool selects = selection_ != nullptr;
    if (selects) selection_.reset(plain_->Select(selection_.get(), wanted));
    Expect(tiltpole_screening_select(handle_, wanted),
           selects ? TILTPOLE_OK : TILTPOLE_NO_SOLUTION);
  }

  void IsComplete(Bytes& bytes) {
    std::int32_t complete = -1;
    std::int32_t* taken = OrNull(bytes, &complete);
    const int promised = OkUnlessNull({handle_, taken});
    Expect(tiltpole_screening_is_complete(handle_, taken), promised);
    if (promised != TILTPOLE_OK) return;
    Require(complete == plain_->IsComplete(selection_.get()), "complete as the class says");
    RequireSameCenter();
  }

  std::vector<PoseSensorData*> Selected() const {
    if (selection_ == nullptr) return {};
    const PoseSensorDataArray& selection = *selection_;
    return {selection.begin(), selection.end()};
  }

  void CopySelection(Bytes& bytes) const {
    const std::vector<PoseSensorData*> selected = Selected();
    CopySamples(bytes, tiltpole_screening_selected, selected);
    std::vector<std::size_t> indices(bytes.Byte());
    std::size_t count = 0;
    const std::size_t capacity = indices.size();
    std::size_t* taken = ArrayOrNull(bytes, indices);
    const bool null = handle_ == nullptr || NullArray(taken, capacity);
    Expect(tiltpole_screening_selected_indices(handle_, taken, capacity, &count),
           null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
    if (null) return;
    Require(count == selected.size(), "how many are selected");
    for (std::size_t i = 0; i < std::min(capacity, count); ++i) {
      Require(indices[i] < records_.size() && records_[indices[i]] == selected[i],
              "which are selected");
    }
  }

  template <class Copy>
  void CopySamples(Bytes& bytes, Copy copy, const std::vector<PoseSensorData*>& expected) const {
    std::vector<tiltpole_sample> samples(bytes.Byte());
    const std::size_t capacity = samples.size();
    std::size_t count = 0;
    std::size_t* count_taken = OrNull(bytes, &count);
    tiltpole_sample* taken = ArrayOrNull(bytes, samples);
    const int promised =
        NullArray(taken, capacity) ? TILTPOLE_NULL_POINTER : OkUnlessNull({handle_, count_taken});
    Expect(copy(handle_, taken, capacity, count_taken), promised);
    if (promised != TILTPOLE_OK) return;
    Require(count == expected.size(), "how many there are");
    for (std::size_t i = 0; i < std::min(capacity, count); ++i) {
      Require(Same(samples[i], ToC(*expected[i])), "the records of the class");
    }
  }

  tiltpole_screening* handle_ = nullptr;
  std::optional<Plain> plain_;
  std::vector<PoseSensorData*> records_;  // the class owns them
  std::unique_ptr<PoseSensorDataArray> selection_;
};

}  // namespace

std::unique_ptr<Player> HorizontalScreeningPlayer() {
  return std::make_unique<Beside<tiltpole::CInclineSensor_Filter_XY, TILTPOLE_TURN_HORIZONTAL>>();
}

std::unique_ptr<Player> VerticalScreeningPlayer() {
  return std::make_unique<Beside<tiltpole::CInclineSensor_Filter_XZ, TILTPOLE_TURN_VERTICAL>>();
}

}  // namespace tiltpole_fuzz
