#include "fuzz/c_interface/calls.h"

#include <algorithm>

#include "calibration/random_session.h"
#include "tiltpole/c/detail/records.h"

namespace tiltpole_fuzz {
namespace {

constexpr int kMostSamples = 60;

double AnyTilt(Bytes& bytes) { return bytes.Between(-128, 127) / 4.0; }

std::vector<tiltpole_sample> WrittenTurn(Bytes& bytes) {
  std::vector<tiltpole_sample> samples;
  for (int i = bytes.Between(0, 20); i > 0; --i) samples.push_back(AnySample(bytes));
  return samples;
}

std::vector<tiltpole_sample> ToC(const std::vector<tiltpole::PoseSensorData>& records,
                                 double tilt) {
  std::vector<tiltpole_sample> samples;
  for (const auto& record : records) {
    tiltpole_sample sample = tiltpole::detail::ToC(record);
    sample.incline_x = tilt;
    sample.incline_y = -tilt / 2;
    sample.time[2] = static_cast<int>(samples.size());
    samples.push_back(sample);
  }
  return samples;
}

}  // namespace

void Expect(int result, int promised) {
  static std::string said = tiltpole_last_error();
  Require(result == promised, "the result that the header promises");
  const std::string says = tiltpole_last_error();
  if (result == TILTPOLE_OK) {
    Require(says == said, "a success leaves what the last failure said");
  } else {
    Require(!says.empty(), "a failure says what was wrong");
    said = says;
  }
}

int AnyOfTwo(Bytes& bytes) {
  const std::uint8_t choice = bytes.Byte();
  return choice % 16 == 15 ? bytes.AnyInt() : choice % 2;
}

std::size_t AnyIndex(Bytes& bytes) {
  const auto index = static_cast<std::size_t>(bytes.AnyInt());
  return bytes.Byte() % 8 == 1 ? index + (SIZE_MAX / 2 + 1) : index;
}

std::string AnyText(Bytes& bytes, std::size_t most) {
  std::string text = bytes.Text(std::min<std::size_t>(bytes.Byte(), most));
  text.resize(std::min(text.size(), text.find('\0')));
  text.shrink_to_fit();
  return text;
}

tiltpole_sample AnySample(Bytes& bytes) {
  tiltpole_sample sample = {};
  Expect(tiltpole_sample_default(&sample), TILTPOLE_OK);
  const bool usual = bytes.Byte() % 4 != 1;
  const auto number = [&](double likely) { return usual ? likely : bytes.AnyDouble(); };
  sample.incline_x = number(AnyTilt(bytes));
  sample.incline_y = number(AnyTilt(bytes));
  for (double& reading : sample.magnetic_a) reading = number(bytes.Count());
  for (double& reading : sample.magnetic_b) reading = number(bytes.Count());
  sample.time[2] = bytes.Byte();
  if (usual) return sample;
  for (double* field : {&sample.yaw_a, &sample.yaw_b, &sample.yaw_y_a, &sample.azimuth,
                        &sample.host_angle, &sample.aux[6]}) {
    *field = bytes.AnyDouble();
  }
  sample.time[0] = bytes.AnyInt();
  sample.forward = bytes.AnyInt();
  return sample;
}

void AnyTurns(Bytes& bytes, Shared& shared) {
  const int kinds = static_cast<int>(tiltpole_test::Kind::kKinds);
  const int kind = bytes.Between(0, kinds);
  if (kind == kinds) {
    for (auto& samples : shared.samples) samples = WrittenTurn(bytes);
    return;
  }
  const int horizontal = bytes.Between(0, kMostSamples);
  const int vertical = bytes.Between(0, kMostSamples);
  const auto turns = [&] {
    return tiltpole_test::RandomTurns(static_cast<tiltpole_test::Kind>(kind), horizontal, vertical,
                                      bytes.Byte());
  };
  const tiltpole_test::Turns of_a = turns();
  const tiltpole_test::Turns of_b = turns();
  const auto session = tiltpole_test::SessionOf(of_a, of_b);
  const double tilt = AnyTilt(bytes);
  shared.samples[TILTPOLE_TURN_HORIZONTAL] = ToC(session.horizontal, tilt);
  shared.samples[TILTPOLE_TURN_VERTICAL] = ToC(session.vertical, tilt);
}

tiltpole_correction AnyCorrection(Bytes& bytes) {
  tiltpole_correction correction = {};
  Expect(tiltpole_correction_default(&correction), TILTPOLE_OK);
  for (double* field : {&correction.a, &correction.b, &correction.c, &correction.d, &correction.e,
                        &correction.x0, &correction.y0, &correction.z0}) {
    if (bytes.Flag()) *field = bytes.AnyDouble();
  }
  return correction;
}

std::vector<tiltpole_sample> SomeOf(Bytes& bytes, const Shared& shared) {
  const auto& turn = shared.samples[bytes.Byte() % 2];
  const std::size_t count =
      bytes.Flag() ? turn.size() : std::min<std::size_t>(bytes.Byte(), turn.size());
  return {turn.begin(), turn.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace tiltpole_fuzz
