// What needs no handle: corrected samples, rigorous tips and the quality of points.

#include "tiltpole/c/detail/tip.h"

#include "fuzz/c_interface/calls.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/quality/point_quality.h"

namespace tiltpole_fuzz {
namespace {

using tiltpole::detail::FromC;
using tiltpole::detail::ToC;

tiltpole_tip_options AnyOptions(Bytes& bytes) {
  tiltpole_tip_options options = {};
  Expect(tiltpole_tip_options_default(&options), TILTPOLE_OK);
  if (bytes.Flag()) {
    for (double* field :
         {&options.bias_angle[0], &options.bias_angle[1], &options.heading_deviation[0],
          &options.heading_deviation[1], &options.largest_heading_difference}) {
      *field = bytes.AnyDouble();
    }
  }
  options.disturbed[bytes.Byte() % 2] = bytes.Flag() ? 1 : 0;
  return options;
}

tiltpole_point_deviations AnyDeviations(Bytes& bytes) {
  tiltpole_point_deviations deviations = {};
  Expect(tiltpole_point_deviations_default(&deviations), TILTPOLE_OK);
  if (!bytes.Flag()) return deviations;
  for (double* field : {&deviations.tilt, &deviations.heading_common, &deviations.length,
                        &deviations.antenna_plane, &deviations.antenna_height}) {
    *field = bytes.AnyDouble();
  }
  return deviations;
}

void Correct(Bytes& bytes, Shared& shared) {
  auto samples = SomeOf(bytes, shared);
  const auto before = samples;
  tiltpole_sample* given = ArrayOrNull(bytes, samples);
  const tiltpole_correction* a = OrNull(bytes, &shared.correction[0]);
  const tiltpole_correction* b = OrNull(bytes, &shared.correction[1]);
  const int promised =
      NullArray(given, samples.size()) ? TILTPOLE_NULL_POINTER : OkUnlessNull({a, b});
  Expect(tiltpole_correct_samples(given, samples.size(), a, b), promised);
  if (promised != TILTPOLE_OK) return;
  for (std::size_t i = 0; i < before.size(); ++i) {
    Require(Same(samples[i], ToC(tiltpole::CorrectSample(FromC(before[i]), FromC(*a), FromC(*b)))),
            "the readings of the library");
  }
}

void RequireSameTip(const tiltpole_rigorous_tip& tip, const tiltpole::RigorousTip& plain) {
  Require(Same(tip.offset, ToC(plain.Offset)), "the rigorous tip of the library");
  Require(Same(tip.heading, plain.Heading) && Same(tip.heading_a, plain.Heading_A) &&
              Same(tip.heading_b, plain.Heading_B) &&
              Same(tip.heading_difference, plain.HeadingDifference),
          "its headings");
  Require(Same(tip.tilt, plain.Tilt) && Same(tip.dip, plain.Dip), "its tilt and dip");
  Require(tip.status == static_cast<int>(plain.Status) &&
              tip.source == static_cast<int>(plain.Source) && (tip.agree == 1) == plain.Agree &&
              tip.reserved == 0,
          "its status and source");
}

void SolveTips(Bytes& bytes, const Shared& shared) {
  auto samples = SomeOf(bytes, shared);
  std::vector<tiltpole_rigorous_tip> tips(samples.size());
  const double length = bytes.AnyDouble();
  const tiltpole_tip_options any = AnyOptions(bytes);
  const tiltpole_tip_options* options = OrNull(bytes, &any);
  const tiltpole_sample* given = ArrayOrNull(bytes, samples);
  tiltpole_rigorous_tip* taken = ArrayOrNull(bytes, tips);
  const bool null = NullArray(given, samples.size()) || NullArray(taken, samples.size());
  Expect(tiltpole_solve_rigorous_tips(given, samples.size(), length, options, taken),
         null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
  for (std::size_t i = 0; i < samples.size() && !null; ++i) {
    RequireSameTip(tips[i], tiltpole::SolveRigorousTip(FromC(samples[i]), length, FromC(options)));
  }
}

void JudgePoints(Bytes& bytes, const Shared& shared) {
  auto samples = SomeOf(bytes, shared);
  std::vector<tiltpole_point_quality> qualities(samples.size());
  const double length = bytes.AnyDouble();
  const tiltpole_tip_options any = AnyOptions(bytes);
  const tiltpole_tip_options* options = OrNull(bytes, &any);
  const tiltpole_point_deviations d = AnyDeviations(bytes);
  const tiltpole_sample* given = ArrayOrNull(bytes, samples);
  tiltpole_point_quality* taken = ArrayOrNull(bytes, qualities);
  const bool null = NullArray(given, samples.size()) || NullArray(taken, samples.size());
  Expect(tiltpole_judge_points(given, samples.size(), length, options, &d, taken),
         null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
  for (std::size_t i = 0; i < samples.size() && !null; ++i) {
    const auto plain = tiltpole::JudgePoint(
        FromC(samples[i]), length, FromC(options),
        {d.tilt, d.heading_common, d.length, d.antenna_plane, d.antenna_height});
    Require(Same(qualities[i].north, plain.North) && Same(qualities[i].east, plain.East) &&
                Same(qualities[i].height, plain.Height),
            "the deviations of the library");
    Require(Same(qualities[i].semi_major, plain.SemiMajor) &&
                Same(qualities[i].semi_major_azimuth, plain.SemiMajorAzimuth),
            "its ellipse");
    Require(qualities[i].limit == static_cast<int>(plain.Limit), "what limits the point");
  }
}

class NoHandle final : public Player {
 public:
  void Step(Bytes& bytes, Shared& shared) override {
    switch (bytes.Byte() % 4) {
      case 0:
        return AnyTurns(bytes, shared);
      case 1:
        return Correct(bytes, shared);
      case 2:
        return SolveTips(bytes, shared);
      default:
        return JudgePoints(bytes, shared);
    }
  }
};

}  // namespace

std::unique_ptr<Player> TipPlayer() { return std::make_unique<NoHandle>(); }

}  // namespace tiltpole_fuzz
