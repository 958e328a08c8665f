// Plots that are made anew keep their view without writing it again and again.

#include "apps/field/turn_plot.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "field_session.h"
#include "robot.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"

namespace tiltpole::field {
namespace {

QString ViewFile() {
  return QDir(QApplication::applicationDirPath()).filePath("GraphMagnetic_XY.cfg");
}

/// Counts how often readings make it write its view.
class WatchedPlot : public CGraphMagnetic_XY {
 public:
  static inline int made = 0;
  static inline int readings = 0;
  static inline int views_written = 0;

  WatchedPlot() { ++made; }
  void AddTrackPoint(int x, int y, int z) {
    QFile::remove(ViewFile());
    CGraphMagnetic_XY::AddTrackPoint(x, y, z);
    ++readings;
    if (QFile::exists(ViewFile())) ++views_written;
  }
};

TEST(TurnPlot, WritesItsViewAFewTimesAtMostWhenItIsMadeAnew) {
  constexpr int kSamples = 360;
  TurnRecording turn(SampleSet::Horizontal);
  session::SimulatedPole pole(tiltpole_test::FieldPole(), 11);
  for (int i = 0; i < kSamples; ++i) {
    turn.Add(pole.Read(session::Attitude::Plumb(360.0 * i / kSamples)));
  }
  QFile::remove(ViewFile());
  TurnPlot<WatchedPlot> plot(turn, nullptr);
  plot.resize(300, 200);
  plot.show();
  ASSERT_TRUE(QTest::qWaitFor([] { return WatchedPlot::readings == kSamples; }));
  plot.resize(400, 250);
  ASSERT_TRUE(QTest::qWaitFor([] { return WatchedPlot::readings == 2 * kSamples; }));
  EXPECT_EQ(WatchedPlot::made, 2);
  constexpr int kFew = 10;
  EXPECT_LE(WatchedPlot::views_written, kFew);
}

}  // namespace
}  // namespace tiltpole::field
