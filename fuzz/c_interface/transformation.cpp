// The transformation of the plane: the parameters and points of the class.

#include "fuzz/c_interface/calls.h"
#include "tiltpole/estimation/CMagneticConvert.h"

namespace tiltpole_fuzz {
namespace {

constexpr std::size_t kMostPairs = 40;

tiltpole_xy AnyPoint(Bytes& bytes) {
  const double x = bytes.AnyDouble();
  return {x, bytes.AnyDouble()};
}

class Beside final : public Player {
 public:
  Beside() { Renew(true); }
  ~Beside() override { tiltpole_transformation_destroy(handle_); }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void Step(Bytes& bytes, Shared& /*shared*/) override {
    switch (bytes.Byte() % 8) {
      case 0:
        return Renew(bytes.Byte() % 8 != 1);
      case 1:
        return Clear();
      case 2:
        return Estimate();
      case 3:
        return SetParameters(bytes);
      case 4:
        return Transform(bytes, true);
      case 5:
        return Transform(bytes, false);
      default:
        return Add(bytes);
    }
  }

 private:
  void Renew(bool there) {
    tiltpole_transformation_destroy(handle_);
    handle_ = nullptr;
    plain_ = std::make_unique<tiltpole::CMagneticConvert>();
    pairs_ = 0;
    tiltpole_transformation** handle = there ? &handle_ : nullptr;
    Expect(tiltpole_transformation_create(handle), OkUnlessNull({handle}));
    if (there) RequireSameParameters();
  }

  void Add(Bytes& bytes) {
    std::vector<tiltpole_point_pair> pairs(bytes.Byte() % 8U);
    if (pairs_ + pairs.size() > kMostPairs) return;
    for (auto& pair : pairs) {
      pair.source = AnyPoint(bytes);
      pair.target = AnyPoint(bytes);
    }
    const tiltpole_point_pair* given = ArrayOrNull(bytes, pairs);
    const bool null = handle_ == nullptr || NullArray(given, pairs.size());
    Expect(tiltpole_transformation_add_pairs(handle_, given, pairs.size()),
           null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
    if (null) return;
    pairs_ += pairs.size();
    for (const auto& [source, target] : pairs) {
      plain_->AddPoint(source.x, source.y, target.x, target.y);
    }
  }

  void Clear() {
    Expect(tiltpole_transformation_clear_pairs(handle_), OkUnlessNull({handle_}));
    if (handle_ == nullptr) return;
    plain_->ClearPoints();
    pairs_ = 0;
  }

  void Estimate() {
    if (handle_ == nullptr) {
      return Expect(tiltpole_transformation_estimate(handle_), TILTPOLE_NULL_POINTER);
    }
    Expect(tiltpole_transformation_estimate(handle_),
           pairs_ == 0 ? TILTPOLE_NO_SOLUTION : TILTPOLE_OK);
    plain_->CalFourParameter();
    RequireSameParameters();
  }

  void SetParameters(Bytes& bytes) {
    tiltpole_four_parameters par = {};
    for (double* field :
         {&par.scale, &par.rotation, &par.offset_x, &par.offset_y, &par.center_x, &par.center_y}) {
      *field = bytes.AnyDouble();
    }
    const tiltpole_four_parameters* given = OrNull(bytes, &par);
    const int promised = OkUnlessNull({handle_, given});
    Expect(tiltpole_transformation_set_parameters(handle_, given), promised);
    if (promised != TILTPOLE_OK) return;
    plain_->SetFourParameter(par.offset_x, par.offset_y, par.rotation, par.scale, par.center_x,
                             par.center_y);
    RequireSameParameters();
  }

  void RequireSameParameters() const {
    tiltpole_four_parameters par = {};
    Expect(tiltpole_transformation_get_parameters(handle_, &par), TILTPOLE_OK);
    Expect(tiltpole_transformation_get_parameters(handle_, nullptr), TILTPOLE_NULL_POINTER);
    const auto plain = plain_->GetFourParameter();
    Require(Same(par, {plain.Scale, plain.Rotation, plain.OffsetX, plain.OffsetY, plain.CenterX,
                       plain.CenterY}),
            "the parameters of the class");
  }

  void Transform(Bytes& bytes, bool forward) const {
    std::vector<tiltpole_xy> points(bytes.Byte() % 4U);
    for (auto& point : points) point = AnyPoint(bytes);
    const std::vector<tiltpole_xy> before = points;
    tiltpole_xy* given = ArrayOrNull(bytes, points);
    const bool null = handle_ == nullptr || NullArray(given, points.size());
    const auto transform =
        forward ? tiltpole_transformation_forward : tiltpole_transformation_inverse;
    Expect(transform(handle_, given, points.size()), null ? TILTPOLE_NULL_POINTER : TILTPOLE_OK);
    for (std::size_t i = 0; i < points.size(); ++i) {
      tiltpole_xy expected = before[i];
      if (!null && forward) plain_->XYtoXY(expected.x, expected.y);
      if (!null && !forward) plain_->XYtoXY1(expected.x, expected.y);
      Require(Same(points[i], expected), "the points of the class");
    }
  }

  tiltpole_transformation* handle_ = nullptr;
  std::unique_ptr<tiltpole::CMagneticConvert> plain_;
  std::size_t pairs_ = 0;
};

}  // namespace

std::unique_ptr<Player> TransformationPlayer() { return std::make_unique<Beside>(); }

}  // namespace tiltpole_fuzz
