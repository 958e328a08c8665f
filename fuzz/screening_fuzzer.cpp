// Any sequence of operations of both screenings. A turn that is only added to and asked is held
// against its plain writing; other sequences bring null entries, records added twice, changed by
// the host, and not-a-number.

#include <memory>
#include <vector>

#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "screening/plain_screening.h"
#include "screening/twins.h"
#include "support/literal_matrix.h"

namespace {

using namespace tiltpole::test;
using tiltpole::PoseSensorData;
using tiltpole::PoseSensorDataArray;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;

constexpr int kMostRecords = 200;

PlainRow AnyRow(Bytes& bytes, bool may_be_any_double) {
  const auto number = [&] {
    if (may_be_any_double) return bytes.AnyDouble();
    // Few places, so that azimuths repeat and readings lie on the axes.
    const std::uint8_t choice = bytes.Byte();
    return choice < 0xC0 ? (choice % 25 - 12) * 100.0 : bytes.Count();
  };
  PlainRow row;
  row.first = number();
  row.second = number();
  row.third = number() / 8.0;
  row.second_of_day = (86340 + bytes.Byte()) % 86400;
  return row;
}

template <class Twin>
PoseSensorData RecordOf(const PlainRow& row) {
  PoseSensorData rec = Twin::Reading(row.first, row.second, row.third);
  rec.Tag[0] = row.second_of_day / 3600;
  rec.Tag[1] = row.second_of_day / 60 % 60;
  rec.Tag[2] = row.second_of_day % 60;
  return rec;
}

template <class Twin>
class BesideThePlainWriting {
 public:
  explicit BesideThePlainWriting(PlainScreening::Turn turn) : plain_(turn) {}

  void Play(Bytes& bytes) {
    while (!bytes.Empty() && plain_.Table().size() < kMostRecords) {
      const PlainRow row = AnyRow(bytes, false);
      plain_.Add(row);
      screening_.Add(new PoseSensorData(RecordOf<Twin>(row)));
      RequireSameAzimuths();
    }
    Require(screening_.GetRecordRate() == plain_.GetRecordRate(), "the same rate");
    Require(screening_.IsRecordOK() == (plain_.IsRecordOK() ? 1 : 0), "covered or not");
    const Owned filtered(screening_.Filter());
    const Rows rows = plain_.Filter();
    Require(RowsOf(filtered.get()) == rows, "the same records are usable");
    RequireSameAzimuths();
    if (filtered == nullptr) return;
    const int n = bytes.Between(1, 50);
    const Owned selected(screening_.Select(filtered.get(), n));
    Require(RowsOf(selected.get()) == plain_.Select(rows, n), "the same records are selected");
    Require(screening_.IsComplete(filtered.get()) == (plain_.IsComplete(rows) ? 1 : 0),
            "complete or not");
    RequireSameAzimuths();
  }

 private:
  void RequireSameAzimuths() const {
    const auto& table = plain_.Table();
    for (int i = 0; i < screening_.m_arrRecord.GetSize(); ++i) {
      const PoseSensorData& rec = *screening_.m_arrRecord.GetAt(i);
      const PlainRow& row = table[static_cast<std::size_t>(i)];
      Require(rec.Azimuth == row.azimuth && rec.Forward == row.forward, "the same azimuths");
    }
  }

  Rows RowsOf(const PoseSensorDataArray* arr) const {
    Rows rows;
    if (arr == nullptr) return rows;
    for (const PoseSensorData* rec : *arr) {
      for (int i = 0; i < screening_.m_arrRecord.GetSize(); ++i) {
        if (screening_.m_arrRecord.GetAt(i) == rec) rows.push_back(i);
      }
    }
    return rows;
  }

  typename Twin::Screening screening_;
  PlainScreening plain_;
};

// The order that the plain exchange sort gives, null entries passed over.
std::vector<PoseSensorData*> PlainSorted(const PoseSensorDataArray& arr) {
  std::vector<PoseSensorData*> sorted(arr.begin(), arr.end());
  for (std::size_t i = 0; i + 1 < sorted.size(); ++i) {
    for (std::size_t j = i + 1; j < sorted.size(); ++j) {
      if (sorted[i] == nullptr || sorted[j] == nullptr) continue;
      if (sorted[j]->Azimuth < sorted[i]->Azimuth) std::swap(sorted[i], sorted[j]);
    }
  }
  return sorted;
}

template <class Twin>
class AnySequence {
 public:
  explicit AnySequence(Bytes& bytes) : bytes_(bytes) {}

  void Step() {
    switch (bytes_.Byte() % 16) {
      case 0:
      case 1:
      case 2:
      case 3:
        return Add();
      case 4:
        if (bytes_.Byte() % 8 != 1) return;
        arr_.reset();
        return screening_.Clear();
      case 5:
        return Take(screening_.Filter());
      case 6:
        return Take(screening_.Select(arr_.get(), bytes_.AnyInt()));
      case 7:
        return InRange(screening_.IsComplete(arr_.get()), 0, 1);
      case 8:
        screening_.m_nSectorAngle = bytes_.AnyInt();
        InRange(screening_.IsRecordOK(), 0, 1);
        return InRange(screening_.GetRecordRate(), 0, 100);
      case 9:
        return Sort();
      case 10:
        return TakeSet();
      case 11:
        return Change();
      case 12:
        return Take(screening_.Filter_ByTime(arr_.get()));
      case 13:
        return Take(screening_.Filter_ByDistance(arr_.get()));
      case 14:
        return Take(screening_.Filter_ByAzimuth(arr_.get()));
      default:
        screening_.Calculate_CenterPar(arr_.get());
        screening_.Calculate_Azimuth(arr_.get());
        return;
    }
  }

 private:
  static void InRange(int value, int low, int high) {
    Require(value >= low && value <= high, "the result is one of those stated");
  }

  PoseSensorData* AnyRecord() {
    const int size = screening_.m_arrRecord.GetSize();
    return size == 0 ? nullptr : screening_.m_arrRecord.GetAt(bytes_.AnyInt() % size);
  }

  void Add() {
    if (screening_.m_arrRecord.GetSize() >= kMostRecords) return;
    const std::uint8_t how = bytes_.Byte();
    if (how % 16 == 1) return screening_.Add(nullptr);
    if (how % 16 == 2) return screening_.Add(AnyRecord());
    screening_.Add(new PoseSensorData(RecordOf<Twin>(AnyRow(bytes_, how % 16 == 3))));
  }

  void Take(PoseSensorDataArray* arr) {
    const std::unique_ptr<PoseSensorDataArray> taken(arr);
    if (taken == nullptr) return;
    if (taken->GetSize() > 0 || bytes_.Flag()) arr_ = std::make_unique<PoseSensorDataArray>(*taken);
  }

  void TakeSet() {
    arr_ = std::make_unique<PoseSensorDataArray>(screening_.m_arrRecord);
    for (int i = bytes_.Between(0, 3); i > 0; --i) {
      arr_->SetAt(bytes_.AnyInt(), bytes_.Flag() ? nullptr : AnyRecord());
    }
  }

  // A host may change the records that it gave away.
  void Change() {
    PoseSensorData* rec = AnyRecord();
    if (rec == nullptr) return;
    rec->Azimuth = bytes_.AnyDouble();
    rec->MagneticX_A = bytes_.AnyDouble();
    rec->Tag[0] = bytes_.AnyInt();
    rec->Tag[2] = bytes_.AnyInt();
    rec->Forward = bytes_.AnyInt();
  }

  void Sort() {
    if (arr_ == nullptr) return screening_.Sort_ByAzimuth(nullptr);
    const std::vector<PoseSensorData*> expected = PlainSorted(*arr_);
    screening_.Sort_ByAzimuth(arr_.get());
    for (int i = 0; i < arr_->GetSize(); ++i) {
      Require(arr_->GetAt(i) == expected[static_cast<std::size_t>(i)],
              "the order of the exchange sort");
    }
  }

  Bytes& bytes_;
  typename Twin::Screening screening_;
  std::unique_ptr<PoseSensorDataArray> arr_;
};

template <class Twin>
void PlaySequence(Bytes& bytes) {
  AnySequence<Twin> sequence(bytes);
  for (int step = 0; step < 300 && !bytes.Empty(); ++step) sequence.Step();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  switch (bytes.Byte() % 4) {
    case 0:
      BesideThePlainWriting<XY>(PlainScreening::Turn::XY).Play(bytes);
      break;
    case 1:
      BesideThePlainWriting<XZ>(PlainScreening::Turn::XZ).Play(bytes);
      break;
    case 2:
      PlaySequence<XY>(bytes);
      break;
    default:
      PlaySequence<XZ>(bytes);
  }
  return 0;
}
