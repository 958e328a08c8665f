// What stands in a ring can be read at every size that the window gives it.

#include "apps/field/coverage_ring.h"

#include <QApplication>
#include <QTranslator>
#include <string_view>

#include <gtest/gtest.h>

#include "field_session.h"

namespace tiltpole::field {
namespace {

/// Leaves the names of the directions out.
class Nameless : public QTranslator {
 public:
  Nameless() { QCoreApplication::installTranslator(this); }

  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                    int /*n*/) const override {
    const bool is_name = std::string_view(source).size() == 1;
    return is_name && std::string_view(context) == "CoverageRing" ? QStringLiteral(" ") : QString();
  }
};

QImage Picture(const TurnRecording& turn, int side) {
  CoverageRing ring(turn, nullptr);
  ring.resize(side, side);
  return ring.grab().toImage();
}

QImage NamelessPicture(const TurnRecording& turn, int side) {
  const Nameless translator;
  return Picture(turn, side);
}

bool HasInkNear(const QImage& picture, QPoint place) {
  for (int y = place.y() - 1; y <= place.y() + 1; ++y) {
    for (int x = place.x() - 1; x <= place.x() + 1; ++x) {
      constexpr int kInk = 160;
      if (picture.valid(x, y) && qGray(picture.pixel(x, y)) < kInk) return true;
    }
  }
  return false;
}

/// How many pixels of the names lie on something else or beside it, and how many there are.
struct NamePixels {
  int touching = 0;
  int all = 0;
};

NamePixels LookAt(const QImage& whole, const QImage& nameless) {
  NamePixels pixels;
  for (int y = 0; y < whole.height(); ++y) {
    for (int x = 0; x < whole.width(); ++x) {
      if (whole.pixel(x, y) == nameless.pixel(x, y)) continue;
      ++pixels.all;
      if (HasInkNear(nameless, {x, y})) ++pixels.touching;
    }
  }
  return pixels;
}

class CoverageRingOf : public testing::TestWithParam<SampleSet> {};

TEST_P(CoverageRingOf, ACompleteTurnHasLabelsThatDoNotTouch) {
  TurnRecording turn(GetParam());
  session::SimulatedPole pole(tiltpole_test::FieldPole(), 11);
  for (int i = 0; i < 360; ++i) {
    turn.Add(pole.Read(GetParam() == SampleSet::Horizontal
                           ? session::Attitude::Plumb(i)
                           : session::Attitude::Plumb(30.0).TurnedAboutY(i)));
  }
  ASSERT_EQ(turn.CoveredPercent(), 100);
  for (const int side : {100, 106, 114, 140, 170, 240}) {
    const NamePixels pixels = LookAt(Picture(turn, side), NamelessPicture(turn, side));
    EXPECT_GT(pixels.all, 20) << side;
    EXPECT_EQ(pixels.touching, 0) << side;
  }
}

INSTANTIATE_TEST_SUITE_P(EachTurn, CoverageRingOf,
                         testing::Values(SampleSet::Horizontal, SampleSet::Vertical));

}  // namespace
}  // namespace tiltpole::field
