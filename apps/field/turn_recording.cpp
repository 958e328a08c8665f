#include "apps/field/turn_recording.h"

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

namespace tiltpole::field {

// The two turns are screened by classes that have no base in common.
struct TurnRecording::Screening {
  virtual ~Screening() = default;
  virtual void Add(const PoseSensorData& raw) = 0;
  virtual void Clear() = 0;
  virtual int Rate() const = 0;
  virtual bool IsOK() const = 0;
  virtual PoseSensorCenterParameter Center() const = 0;
};

template <typename Filter>
struct TurnRecording::ScreeningBy final : Screening {
  Filter filter;

  void Add(const PoseSensorData& raw) override {
    auto record = std::make_unique<PoseSensorData>(raw);
    filter.Add(record.get());
    static_cast<void>(record.release());
  }
  void Clear() override { filter.Clear(); }
  int Rate() const override { return filter.GetRecordRate(); }
  bool IsOK() const override { return filter.IsRecordOK() != 0; }
  PoseSensorCenterParameter Center() const override { return filter.GetCenterPar(); }
};

TurnRecording::TurnRecording(SampleSet turn) : turn_(turn) {
  if (turn == SampleSet::Horizontal) {
    screening_ = std::make_unique<ScreeningBy<CInclineSensor_Filter_XY>>();
  } else {
    screening_ = std::make_unique<ScreeningBy<CInclineSensor_Filter_XZ>>();
  }
}

TurnRecording::~TurnRecording() = default;
TurnRecording::TurnRecording(TurnRecording&&) noexcept = default;
TurnRecording& TurnRecording::operator=(TurnRecording&&) noexcept = default;

void TurnRecording::Add(const PoseSensorData& raw) {
  samples_.push_back(raw);
  screening_->Add(raw);
  UpdateSectors();
}

void TurnRecording::Clear() {
  ++clears_;
  samples_.clear();
  screening_->Clear();
  covered_.reset();
  last_direction_.reset();
}

int TurnRecording::CoveredPercent() const { return screening_->Rate(); }

bool TurnRecording::IsComplete() const { return screening_->IsOK(); }

double TurnRecording::DirectionOf(const PoseSensorData& raw) const {
  const PoseSensorCenterParameter center = screening_->Center();
  const double second = turn_ == SampleSet::Horizontal ? raw.MagneticY_A - center.CenterY
                                                       : raw.MagneticZ_A - center.CenterZ;
  return CInclineSensor_Position().ConverseYaw_True(raw.MagneticX_A - center.CenterX, second);
}

// The middle moves with every tenth sample, and the directions of all with it.
void TurnRecording::UpdateSectors() {
  constexpr std::size_t kSamplesPerMiddle = 10;
  if (samples_.size() < kSamplesPerMiddle) return;
  const auto mark = [this](const PoseSensorData& raw) {
    last_direction_ = DirectionOf(raw);
    const auto sector = static_cast<std::size_t>(*last_direction_ / kSectorWidth);
    covered_[sector % kSectors] = true;
  };
  if (samples_.size() % kSamplesPerMiddle != 0) {
    mark(samples_.back());
    return;
  }
  covered_.reset();
  for (const PoseSensorData& raw : samples_) mark(raw);
}

}  // namespace tiltpole::field
