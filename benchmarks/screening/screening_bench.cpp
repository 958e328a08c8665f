// The screening of turns of 1,000 to 100,000 records. Where the library takes another way than the
// one its rules are written down in, the plain way is timed beside it, and `times_plain` says how
// many times as long that takes. Times are the process's own, so that a busy machine counts less.

#include <cmath>
#include <ctime>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "tiltpole/screening/CInclineSensor_Filter_XY.h"

namespace {

using namespace tiltpole;

using Owned = std::unique_ptr<PoseSensorDataArray>;

double SecondsSince(std::clock_t start) {
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The time of one run, from as many as the clock needs to tell it.
template <class Work>
double SecondsOf(Work work) {
  const std::clock_t start = std::clock();
  int runs = 0;
  do {
    work();
    ++runs;
  } while (SecondsSince(start) < 0.01);
  return SecondsSince(start) / runs;
}

class Screening : public CInclineSensor_Filter_XY {
 public:
  using CInclineSensor_Filter_XY::m_arrRecord;

  // With whole counts, so that azimuths repeat.
  Screening(int count, int turns) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> noise(-30, 30);
    for (int i = 0; i < count; ++i) {
      auto* rec = new PoseSensorData();
      const double direction = 6.283 * turns * i / count;
      rec->MagneticX_A = std::round(4000.0 * std::sin(direction)) + noise(random);
      rec->MagneticY_A = std::round(4000.0 * std::cos(direction)) + noise(random);
      rec->Tag[0] = i / 36000;
      rec->Tag[2] = i / 10;
      m_arrRecord.Add(rec);
    }
    IsComplete(&m_arrRecord);
  }
};

void PlainSort(PoseSensorDataArray& arr) {
  const int size = arr.GetSize();
  PoseSensorData** entries = arr.begin();
  for (int i = 0; i + 1 < size; ++i) {
    for (int j = i + 1; j < size; ++j) {
      if (entries[j]->Azimuth < entries[i]->Azimuth) std::swap(entries[i], entries[j]);
    }
  }
}

bool PlainIsSectorHit(const PoseSensorDataArray& arr, int sector) {
  for (const PoseSensorData* rec : arr) {
    if (sector * 5 < rec->Azimuth && rec->Azimuth < (sector + 1) * 5) return true;
  }
  return false;
}

int PlainSectorsHit(const PoseSensorDataArray& arr) {
  int hit = 0;
  for (int sector = 0; sector < 72; ++sector) {
    if (PlainIsSectorHit(arr, sector)) ++hit;
  }
  return hit;
}

bool PlainIsEverySectorHit(const PoseSensorDataArray& arr) {
  for (int sector = 0; sector < 72; ++sector) {
    if (!PlainIsSectorHit(arr, sector)) return false;
  }
  return true;
}

// Runs `work` for each iteration and reports its time a record and beside the plain way's.
template <class Work>
void Measure(benchmark::State& state, double plainSeconds, Work work) {
  const std::clock_t start = std::clock();
  for (auto _ : state) work();
  const double seconds = SecondsSince(start) / static_cast<double>(state.iterations());
  state.counters["ns_a_record"] = seconds * 1e9 / static_cast<double>(state.range(0));
  if (plainSeconds > 0.0) state.counters["times_plain"] = plainSeconds / seconds;
}

void SortByAzimuth(benchmark::State& state) {
  Screening screening(static_cast<int>(state.range(0)), 10);
  const double plainSeconds = SecondsOf([&screening] {
    PoseSensorDataArray arr = screening.m_arrRecord;
    PlainSort(arr);
    benchmark::DoNotOptimize(arr.GetAt(0));
  });
  Measure(state, plainSeconds, [&screening] {
    PoseSensorDataArray arr = screening.m_arrRecord;
    screening.Sort_ByAzimuth(&arr);
    benchmark::DoNotOptimize(arr.GetAt(0));
  });
}

// One turn of which the last sectors are missing, so that no pass over the set ends early.
void LeaveOutTheLast(double degrees, const Screening& screening) {
  for (PoseSensorData* rec : screening.m_arrRecord) rec->Azimuth *= (360.0 - degrees) / 360.0;
}

void GetRecordRate(benchmark::State& state) {
  const Screening screening(static_cast<int>(state.range(0)), 1);
  LeaveOutTheLast(180.0, screening);
  const double plainSeconds =
      SecondsOf([&] { benchmark::DoNotOptimize(PlainSectorsHit(screening.m_arrRecord)); });
  Measure(state, plainSeconds, [&] { benchmark::DoNotOptimize(screening.GetRecordRate()); });
}

void IsRecordOK(benchmark::State& state) {
  const Screening screening(static_cast<int>(state.range(0)), 1);
  LeaveOutTheLast(5.0, screening);
  const double plainSeconds =
      SecondsOf([&] { benchmark::DoNotOptimize(PlainIsEverySectorHit(screening.m_arrRecord)); });
  Measure(state, plainSeconds, [&] { benchmark::DoNotOptimize(screening.IsRecordOK()); });
}

void Filter(benchmark::State& state) {
  Screening screening(static_cast<int>(state.range(0)), 2);
  Measure(state, 0.0, [&] { benchmark::DoNotOptimize(Owned(screening.Filter())); });
}

void Select(benchmark::State& state) {
  const Screening screening(static_cast<int>(state.range(0)), 2);
  Measure(state, 0.0,
          [&] { benchmark::DoNotOptimize(Owned(screening.Select(&screening.m_arrRecord, 100))); });
}

// A whole turn added record by record, with a fit at every tenth.
void AddAll(benchmark::State& state) {
  std::vector<PoseSensorData> turn;
  {
    const Screening model(static_cast<int>(state.range(0)), 2);
    for (const PoseSensorData* rec : model.m_arrRecord) turn.push_back(*rec);
  }
  Measure(state, 0.0, [&turn] {
    CInclineSensor_Filter_XY screening;
    for (const PoseSensorData& rec : turn) screening.Add(new PoseSensorData(rec));
    benchmark::DoNotOptimize(screening.GetCenterPar());
  });
}

// The plain sort takes a good while; each size is set up once.
BENCHMARK(SortByAzimuth)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->RangeMultiplier(10)
    ->Range(1000, 100000);
BENCHMARK(GetRecordRate)->Unit(benchmark::kMicrosecond)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(IsRecordOK)->Unit(benchmark::kMicrosecond)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(Filter)->Unit(benchmark::kMillisecond)->Arg(1000)->Arg(10000)->Arg(20000)->Arg(100000);
BENCHMARK(Select)->Unit(benchmark::kMicrosecond)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(AddAll)->Unit(benchmark::kMillisecond)->Arg(1000)->Arg(10000);

}  // namespace
