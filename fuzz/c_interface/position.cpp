// The positioning: the tips, flags, parameters and files of the class.

#include "fuzz/c_interface/calls.h"
#include "support/temporary_folder.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace tiltpole_fuzz {
namespace {

using tiltpole::detail::FromC;
using tiltpole::detail::NarrowText;
using tiltpole::detail::ToC;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

constexpr const wchar_t* kFile = L"pole.par";

const TemporaryFolder& Folder() {
  static const TemporaryFolder folder;
  return folder;
}

// One that can be written, or none: a folder, or within no folder.
std::wstring AnyPath(Bytes& bytes) {
  constexpr const wchar_t* kNames[] = {kFile, kFile, kFile, L"", L"none/a"};
  return Folder() / kNames[bytes.Byte() % 5];
}

class Beside final : public Player {
 public:
  Beside() {
    WriteBytes(Folder() / kFile, "");
    Renew(true);
  }
  ~Beside() override { tiltpole_position_destroy(handle_); }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void Step(Bytes& bytes, Shared& shared) override {
    switch (bytes.Byte() % 12) {
      case 0:
        return Renew(bytes.Byte() % 8 != 1);
      case 1:
        shared.correction[bytes.Byte() % 2] = AnyCorrection(bytes);
        return SetCorrection(bytes, shared);
      case 2:
        return SetCorrection(bytes, shared);
      case 3:
        return SetTranslation(bytes, shared);
      case 4:
        return SetBias(bytes);
      case 5:
        return Save(bytes);
      case 6:
        return Read(bytes);
      case 7:
        return SolveWithHeading(bytes);
      case 8:
        return WriteBytes(Folder() / kFile, bytes.Text(bytes.Byte()));
      default:
        return Solve(bytes, shared);
    }
  }

 private:
  void Renew(bool there) {
    tiltpole_position_destroy(handle_);
    handle_ = nullptr;
    plain_ = tiltpole::CInclineSensor_Position();
    tiltpole_position** handle = there ? &handle_ : nullptr;
    Expect(tiltpole_position_create(handle), OkUnlessNull({handle}));
    RequireSameParameters();
  }

  int Promised(const void* pointer, int magnetometer) const {
    const int promised = OkUnlessNull({handle_, pointer});
    if (promised != TILTPOLE_OK) return promised;
    return IsOneOfTwo(magnetometer) ? TILTPOLE_OK : TILTPOLE_BAD_ARGUMENT;
  }

  void SetCorrection(Bytes& bytes, const Shared& shared) {
    const int magnetometer = AnyOfTwo(bytes);
    const tiltpole_correction& correction = shared.correction[bytes.Byte() % 2];
    const tiltpole_correction* given = OrNull(bytes, &correction);
    const int promised = Promised(given, magnetometer);
    Expect(tiltpole_position_set_correction(handle_, magnetometer, given), promised);
    if (promised == TILTPOLE_OK && magnetometer == TILTPOLE_MAGNETOMETER_A) {
      plain_.SetMagneticCorrectPar_A(FromC(correction));
    } else if (promised == TILTPOLE_OK) {
      plain_.SetMagneticCorrectPar_B(FromC(correction));
    }
    RequireSameParameters();
  }

  void SetTranslation(Bytes& bytes, Shared& shared) {
    if (bytes.Flag()) shared.translation = {bytes.AnyDouble(), bytes.AnyDouble(), 0.0};
    const tiltpole_translation* given = OrNull(bytes, &shared.translation);
    const int promised = OkUnlessNull({handle_, given});
    Expect(tiltpole_position_set_translation(handle_, given), promised);
    if (promised == TILTPOLE_OK) plain_.SetMagneticTranslationPar(FromC(*given));
    RequireSameParameters();
  }

  void SetBias(Bytes& bytes) {
    const int magnetometer = AnyOfTwo(bytes);
    const double bias = bytes.AnyDouble();
    const int promised = Promised(&bias, magnetometer);
    Expect(tiltpole_position_set_bias_angle(handle_, magnetometer, bias), promised);
    if (promised == TILTPOLE_OK && magnetometer == TILTPOLE_MAGNETOMETER_A) {
      plain_.SetMagneticBiasAngle_A(bias);
    } else if (promised == TILTPOLE_OK) {
      plain_.SetMagneticBiasAngle_B(bias);
    }
    RequireSameParameters();
  }

  void RequireSameParameters() const {
    if (handle_ == nullptr) return;
    tiltpole_correction a = {};
    tiltpole_correction b = {};
    tiltpole_translation translation = {};
    double bias_a = 0.0;
    double bias_b = 0.0;
    Expect(tiltpole_position_get_correction(handle_, TILTPOLE_MAGNETOMETER_A, &a), TILTPOLE_OK);
    Expect(tiltpole_position_get_correction(handle_, TILTPOLE_MAGNETOMETER_B, &b), TILTPOLE_OK);
    Expect(tiltpole_position_get_translation(handle_, &translation), TILTPOLE_OK);
    Expect(tiltpole_position_get_bias_angle(handle_, TILTPOLE_MAGNETOMETER_A, &bias_a),
           TILTPOLE_OK);
    Expect(tiltpole_position_get_bias_angle(handle_, TILTPOLE_MAGNETOMETER_B, &bias_b),
           TILTPOLE_OK);
    Require(Same(a, ToC(plain_.GetMagneticCorrectPar_A())), "A's correction");
    Require(Same(b, ToC(plain_.GetMagneticCorrectPar_B())), "B's correction");
    Require(Same(translation, ToC(plain_.GetMagneticTranslationPar())), "the translation");
    Require(Same(bias_a, plain_.GetMagneticBiasAngle_A()), "A's bias");
    Require(Same(bias_b, plain_.GetMagneticBiasAngle_B()), "B's bias");
  }

  void Save(Bytes& bytes) const {
    const std::wstring path = AnyPath(bytes);
    const std::string narrow = NarrowText(path);
    const char* given = OrNull(bytes, narrow.c_str());
    const bool replace = bytes.Flag();
    const auto save = replace ? tiltpole_position_replace : tiltpole_position_save;
    if (OkUnlessNull({handle_, given}) != TILTPOLE_OK) {
      return Expect(save(handle_, given), TILTPOLE_NULL_POINTER);
    }
    const int plain = replace ? plain_.ConfigReplace(path) : plain_.ConfigSave(path);
    const std::string expected = plain == 1 ? ReadBytes(path) : std::string();
    Expect(save(handle_, given), plain == 1 ? TILTPOLE_OK : TILTPOLE_FILE_ERROR);
    Require(plain != 1 || ReadBytes(path) == expected, "the file of the class");
  }

  void Read(Bytes& bytes) {
    const std::wstring path = AnyPath(bytes);
    const std::string narrow = NarrowText(path);
    const char* given = OrNull(bytes, narrow.c_str());
    int promised = OkUnlessNull({handle_, given});
    if (promised == TILTPOLE_OK && plain_.ConfigRead(path) != 1) promised = TILTPOLE_FILE_ERROR;
    Expect(tiltpole_position_read(handle_, given), promised);
    RequireSameParameters();
  }

  void Solve(Bytes& bytes, const Shared& shared) {
    auto samples = SomeOf(bytes, shared);
    const std::vector<tiltpole_sample> before = samples;
    std::vector<tiltpole_measurement> results(samples.size());
    const double length = bytes.AnyDouble();
    tiltpole_sample* given = ArrayOrNull(bytes, samples);
    tiltpole_measurement* taken = ArrayOrNull(bytes, results);
    const bool null =
        handle_ == nullptr || NullArray(given, before.size()) || NullArray(taken, before.size());
    Expect(tiltpole_position_solve(handle_, given, samples.size(), length, taken),
           null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
    if (null) return;
    for (std::size_t i = 0; i < before.size(); ++i) {
      auto record = FromC(before[i]);
      tiltpole::xyhCoordinate tip;
      plain_.Position(record, length, tip);
      Require(Same(samples[i], ToC(record)), "the headings of the class");
      Require(Same(results[i].offset, ToC(tip)), "the tips of the class");
      Require(results[i].stationary == plain_.IsStationary(), "standing still");
      Require(results[i].interference == plain_.IsMagneticInterference(), "disturbed");
    }
  }

  void SolveWithHeading(Bytes& bytes) {
    const tiltpole_sample sample = AnySample(bytes);
    const tiltpole_xyh antenna = {bytes.AnyDouble(), bytes.AnyDouble(), bytes.AnyDouble()};
    const double length = bytes.AnyDouble();
    const int solution = bytes.Between(-1, 3);
    tiltpole_xyh tip = antenna;
    const tiltpole_xyh* from = OrNull(bytes, &antenna);
    const tiltpole_sample* with = OrNull(bytes, &sample);
    tiltpole_xyh* to = OrNull(bytes, &tip);
    tiltpole::xyhCoordinate expected = FromC(antenna);
    int promised = OkUnlessNull({handle_, from, with, to});
    if (promised == TILTPOLE_OK) promised = PlainTip(solution, antenna, sample, length, expected);
    Expect(tiltpole_position_solve_with_heading(handle_, solution, from, with, length, to),
           promised);
    Require(promised == TILTPOLE_OK ? Same(tip, ToC(expected)) : Same(tip, antenna),
            "the tip of the class, or the one before");
    double angle = 0.0;
    Expect(tiltpole_angle_to_horizontal(sample.incline_x, sample.incline_y, &angle), TILTPOLE_OK);
    Require(Same(angle, plain_.GetAngleofPoletoHorizontal(sample.incline_x, sample.incline_y)),
            "the angle of the class");
  }

  int PlainTip(int solution, const tiltpole_xyh& antenna, const tiltpole_sample& sample,
               double length, tiltpole::xyhCoordinate& tip) {
    switch (solution) {
      case TILTPOLE_SOLUTION_GEOMETRY_A:
        plain_.Position_Geometry_A(FromC(antenna), FromC(sample), length, tip);
        return TILTPOLE_OK;
      case TILTPOLE_SOLUTION_GEOMETRY_B:
        plain_.Position_Geometry_B(FromC(antenna), FromC(sample), length, tip);
        return TILTPOLE_OK;
      case TILTPOLE_SOLUTION_MATH:
        return plain_.Position_Math(FromC(antenna), FromC(sample), length, tip) == 1
                   ? TILTPOLE_OK
                   : TILTPOLE_NO_SOLUTION;
      default:
        return TILTPOLE_BAD_ARGUMENT;
    }
  }

  tiltpole_position* handle_ = nullptr;
  tiltpole::CInclineSensor_Position plain_;
};

}  // namespace

std::unique_ptr<Player> PositionPlayer() { return std::make_unique<Beside>(); }

}  // namespace tiltpole_fuzz
