// tiltpole simulate: a session with a pole whose truth is known.

#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "apps/session/output_file.h"
#include "apps/session/parameter_file.h"
#include "apps/session/session_writer.h"
#include "apps/session/simulated_session.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "apps/tiltpole/progress.h"

namespace tiltpole::cli {
namespace {

using session::MagnetometerErrors;
using session::Vector3;

struct SimulateOptions {
  std::uint64_t seed = 1;
  session::SessionPlan plan;
  session::PoleSettings pole;
  double noise = 5.0;
  bool ideal = false;
  std::vector<double> offset_a, scale_a, cross_a;
  std::vector<double> offset_b, scale_b, cross_b;
  std::string output = "-";
  std::string true_params;
};

void SetErrors(MagnetometerErrors& errors, const std::vector<double>& offset,
               const std::vector<double>& scale, const std::vector<double>& cross) {
  if (!offset.empty()) errors.offset = Vector3{offset[0], offset[1], offset[2]};
  if (!scale.empty()) {
    errors.scale_y = scale[0];
    errors.scale_z = scale[1];
  }
  if (!cross.empty()) {
    errors.cross_yx = cross[0];
    errors.cross_zx = cross[1];
    errors.cross_zy = cross[2];
  }
}

session::PoleSettings SettingsOf(const SimulateOptions& options) {
  session::PoleSettings settings = options.pole;
  if (options.ideal) {
    settings.tilt_noise = settings.tilt_step = settings.count_step = 0.0;
  } else {
    settings.errors_a = session::TypicalErrors_A();
    settings.errors_b = session::TypicalErrors_B();
    settings.errors_a.noise = settings.errors_b.noise = options.noise;
  }
  SetErrors(settings.errors_a, options.offset_a, options.scale_a, options.cross_a);
  SetErrors(settings.errors_b, options.offset_b, options.scale_b, options.cross_b);
  return settings;
}

void WriteTrueParameters(const std::string& path, const session::PoleSettings& settings) {
  CInclineSensor_Position position;
  position.SetMagneticCorrectPar_A(TrueCorrection(settings.errors_a));
  position.SetMagneticCorrectPar_B(TrueCorrection(settings.errors_b));
  session::WriteParameterFile(path, position);
}

int Simulate(const SimulateOptions& options, Console& console) {
  RefuseOneFileForTwoOutputs(options.output, options.true_params);
  const session::PoleSettings settings = SettingsOf(options);
  session::SimulatedPole pole(settings, options.seed);
  session::SimulatedSession simulated(options.plan, pole, options.seed);
  session::OutputFile output(options.output, console.out);
  session::SessionWriter writer(output.Stream(), session::SimulatedSession::Columns());
  {
    Progress progress(console, "simulate", static_cast<std::uint64_t>(simulated.Rows()));
    session::SessionSample sample;
    std::uint64_t rows = 0;
    while (output.Stream() && simulated.Next(sample)) {
      writer.Write(sample);
      progress.Row(++rows);
    }
  }
  output.Commit();
  if (!options.true_params.empty()) WriteTrueParameters(options.true_params, settings);
  return kDone;
}

// The parser's own conversion takes a sign and numbers beyond the range.
CLI::Validator Seed() {
  const std::string range =
      "0 to " + std::to_string(std::numeric_limits<decltype(SimulateOptions::seed)>::max());
  const auto check = [range](const std::string& text) -> std::string {
    decltype(SimulateOptions::seed) seed = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, seed);
    if (error == std::errc() && stop == end) return {};
    return text + " is no whole number from " + range;
  };
  return {check, range};
}

void AddSensorOptions(CLI::App& command, const std::string& which, std::vector<double>& offset,
                      std::vector<double>& scale, std::vector<double>& cross) {
  command
      .add_option("--offset-" + which, offset, "Offsets of magnetometer " + which + " in counts")
      ->expected(3)
      ->check(NumberBetween(-1e9, 1e9))
      ->type_name("X Y Z");
  command
      .add_option("--scale-" + which, scale,
                  "Gains of its y and z axes against its x axis, above 0")
      ->expected(2)
      ->check(NumberBetween(1e-6, 1e6))
      ->type_name("Y Z");
  command
      .add_option("--cross-" + which, cross,
                  "Its cross-axis shares: of x in y, of x in z, of y in z")
      ->expected(3)
      ->check(NumberBetween(-1e6, 1e6))
      ->type_name("YX ZX ZY");
}

}  // namespace

void AddSimulate(CLI::App& program, Action& action) {
  const auto options = std::make_shared<SimulateOptions>();
  session::PoleSettings& pole = options->pole;
  pole.tilt_noise = 0.01;
  pole.tilt_step = 0.001;
  pole.count_step = 1.0;

  CLI::App& command = *program.add_subcommand(
      "simulate",
      "Write a session of a simulated pole: a turn about the vertical, a turn about the sensor's y "
      "axis, and a block of points with the antenna's position and the tip's true one.");
  command.add_option("-o,--output", options->output, "Session file")->capture_default_str();
  command
      .add_option("--true-params", options->true_params,
                  "Also write the parameter file that undoes the simulated errors exactly")
      ->check(ParameterFileName());
  command.add_option("--seed", options->seed, "The same seed gives the same session everywhere")
      ->check(Seed())
      ->capture_default_str();
  command.add_option("--samples", options->plan.samples_per_turn, "Samples per turn")
      ->check(WholeNumberBetween(std::int64_t{0}, std::int64_t{1'000'000'000}))
      ->capture_default_str();
  command.add_option("--points", options->plan.points, "Points to measure")
      ->check(WholeNumberBetween(std::int64_t{0}, std::int64_t{1'000'000'000}))
      ->capture_default_str();
  command.add_option("--max-tilt", options->plan.largest_tilt, "Largest tilt at a point, degrees")
      ->check(NumberBetween(0.0, 90.0))
      ->capture_default_str();
  command.add_option("--wobble", options->plan.wobble, "Sway of the pole during turns, degrees")
      ->check(NumberBetween(0.0, 45.0))
      ->capture_default_str();
  command.add_option("--pole-length", pole.pole_length, "Antenna to tip, metres")
      ->check(NumberBetween(1e-3, 1e3))
      ->capture_default_str();
  command.add_option("--field", pole.field_strength, "Strength of the magnetic field, counts")
      ->check(NumberBetween(1e-3, 1e9))
      ->capture_default_str();
  command.add_option("--dip", pole.dip, "Dip of the field, degrees, downwards positive")
      ->check(NumberBetween(-90.0, 90.0))
      ->capture_default_str();
  command
      .add_option("--noise", options->noise, "Standard deviation of each magnetometer axis, counts")
      ->check(NumberBetween(0.0, 1e9))
      ->capture_default_str();
  command.add_option("--tilt-noise", pole.tilt_noise, "Standard deviation of each tilt, degrees")
      ->check(NumberBetween(0.0, 90.0))
      ->capture_default_str();
  command
      .add_option("--count-step", pole.count_step,
                  "Readings are multiples of this; 0 leaves them unrounded")
      ->check(NumberBetween(0.0, 1e6))
      ->capture_default_str();
  command
      .add_option("--tilt-step", pole.tilt_step,
                  "Tilts are multiples of this, degrees; 0 leaves them unrounded")
      ->check(NumberBetween(0.0, 10.0))
      ->capture_default_str();
  AddSensorOptions(command, "a", options->offset_a, options->scale_a, options->cross_a);
  AddSensorOptions(command, "b", options->offset_b, options->scale_b, options->cross_b);
  command.add_flag("--ideal", options->ideal,
                   "Sensors without errors, noise or rounding, but for the offsets, scales and "
                   "cross terms given");
  RunsWith(command, action, options, Simulate);
}

}  // namespace tiltpole::cli
