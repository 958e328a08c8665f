// Every allocation of a control fails in turn while it draws: what was taken from the windowing
// system is given back, and the next paint shows the whole picture.

#include <string>

#include "controls/recorded.h"
#include "controls/view_files.h"
#include "support/allocations.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"

namespace {

using tiltpole::CGraphCompass;
using tiltpole::CGraphIncline_Left;
using tiltpole::CGraphMagnetic_XY;
using tiltpole::Recorder;
using tiltpole_test::Ended;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::RunWithFailure;

// How many drawing calls a paint makes.
template <class Control>
long long CallsOfPaint(Control& control) {
  Recorder& recorder = Recorder::Instance();
  const long long before = recorder.calls;
  control.Invalidate(false);
  control.PaintIfInvalid();
  return recorder.calls - before;
}

// How many drawing calls it takes to draw anew what a plot keeps.
long long CallsOfLayers(CGraphMagnetic_XY& plot) {
  Recorder& recorder = Recorder::Instance();
  const long long before = recorder.calls;
  plot.InvalidateCtrl();
  return recorder.calls - before;
}

class ControlAllocations : public tiltpole_test::RecordedTest {
 protected:
  ControlAllocations() { recorder.keeps_lines = false; }
  ~ControlAllocations() override { recorder.keeps_lines = true; }
  tiltpole_test::ViewFiles files;
};

template <class Dial>
class DialAllocations : public ControlAllocations {};

using Dials = ::testing::Types<CGraphCompass, CGraphIncline_Left>;
struct DialNames {
  template <class Dial>
  static std::string GetName(int index) {
    return index == 0 ? "Compass" : "Gauge";
  }
};
TYPED_TEST_SUITE(DialAllocations, Dials, DialNames);

TYPED_TEST(DialAllocations, AFirstPaintThatFailsIsMadeUpForByTheNext) {
  TypeParam undisturbed;
  undisturbed.Attach({200, 300});
  const long long first = CallsOfPaint(undisturbed);
  const long long second = CallsOfPaint(undisturbed);
  ASSERT_GT(first, second);
  const long failures = FailEachAllocation([&](long after) {
    TypeParam dial;
    dial.Attach({200, 300});
    const Ended ended = RunWithFailure(after, [&] { dial.PaintIfInvalid(); });
    // Either the face was finished, or all of it is drawn now.
    const long long calls = CallsOfPaint(dial);
    EXPECT_TRUE(calls == first || calls == second) << calls << " after " << after;
    EXPECT_EQ(CallsOfPaint(dial), second);
    return ended;
  });
  EXPECT_GT(failures, 3);
}

TYPED_TEST(DialAllocations, AMarkOrValueThatFailsLeavesAPictureThatCanBePainted) {
  const long failures = FailEachAllocation([&](long after) {
    TypeParam dial;
    dial.Attach({200, 300});
    dial.PaintIfInvalid();
    const Ended ended = RunWithFailure(after, [&] {
      dial.SetFix(30);
      dial.SetValue(45.0);
    });
    dial.SetFix(30);
    dial.SetValue(45.0);
    TypeParam undisturbed;
    undisturbed.Attach({200, 300});
    undisturbed.PaintIfInvalid();
    undisturbed.SetFix(30);
    undisturbed.SetValue(45.0);
    EXPECT_EQ(CallsOfPaint(dial), CallsOfPaint(undisturbed)) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 2);
}

TEST_F(ControlAllocations, APlotThatFailsToDrawShowsAllWithItsNextPicture) {
  const auto fill = [](CGraphMagnetic_XY& plot) {
    plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
    for (int i = 0; i < 15; ++i) plot.AddTrackPoint(4000 * i, 3000, 0);
    plot.AddCenterPoint(0, 0, 0);
    plot.PaintIfInvalid();
  };
  const long failures = FailEachAllocation([&](long after) {
    files.Remove();
    CGraphMagnetic_XY plot;
    const Ended ended = RunWithFailure(after, [&] { fill(plot); });
    plot.Clear();
    fill(plot);
    plot.ZoomAll();
    CGraphMagnetic_XY undisturbed;
    fill(undisturbed);
    undisturbed.ZoomAll();
    EXPECT_EQ(CallsOfPaint(plot), CallsOfPaint(undisturbed)) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 10);
}

// What a plot keeps is drawn by several operations; whichever fails, a paint makes up for it.
TEST_F(ControlAllocations, APlotThatFailsToDrawItsLayersDrawsThemWithTheNextPaint) {
  const auto fill = [](CGraphMagnetic_XY& plot) {
    plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
    for (int i = 0; i < 10; ++i) plot.AddTrackPoint(30 * i - 500, -400, 0);
    plot.PaintIfInvalid();
  };
  const long failures = FailEachAllocation([&](long after) {
    files.Remove();
    CGraphMagnetic_XY plot;
    fill(plot);
    const long long paint = CallsOfPaint(plot);
    const Ended ended = RunWithFailure(after, [&] { plot.ZoomAll(); });
    const long long next_paint = CallsOfPaint(plot);
    EXPECT_EQ(next_paint, paint + (ended == Ended::Thrown ? CallsOfLayers(plot) : 0))
        << "after " << after;
    EXPECT_EQ(CallsOfPaint(plot), paint) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 3);
}

TEST_F(ControlAllocations, APlotThatFailsOnAScreenOfAnotherScaleIsWholeThereWithTheNextPaint) {
  const long failures = FailEachAllocation([&](long after) {
    files.Remove();
    recorder.screen_scale = 1;
    CGraphMagnetic_XY plot;
    plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
    plot.AddTrackPoint(-400, -400, 0);
    const long long paint = CallsOfPaint(plot);
    recorder.screen_scale = 2;
    const Ended ended = RunWithFailure(after, [&] { CallsOfPaint(plot); });
    const long long next_paint = CallsOfPaint(plot);
    // Either the layers were finished, or all of both is drawn now.
    EXPECT_TRUE(next_paint == paint || next_paint >= paint + CallsOfLayers(plot))
        << next_paint << " after " << after;
    EXPECT_EQ(CallsOfPaint(plot), paint) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 5);
}

TEST_F(ControlAllocations, AViewThatCannotBeReadStays) {
  const long failures = FailEachAllocation([&](long after) {
    files.Write(files.xy, "GRAPHMAGNETIC_XY:10, 20, 0.500000,\r\n");
    CGraphMagnetic_XY plot;
    plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
    files.Write(files.xy, "GRAPHMAGNETIC_XY:30, 40, 0.500000,\r\n");
    int read = 0;
    const Ended ended = RunWithFailure(after, [&] { read = plot.ConfigRead(); });
    int x = 0;
    int y = 0;
    plot.WorldToClient(30, 40, x, y);
    EXPECT_EQ(x, read == 1 ? 0 : 40) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 1);
}

TEST_F(ControlAllocations, AViewThatCannotBeSavedLeavesTheFile) {
  const long failures = FailEachAllocation([&](long after) {
    files.Remove();
    CGraphMagnetic_XY plot;
    files.Write(files.xy, "before");
    const Ended ended = RunWithFailure(after, [&] { plot.ConfigSave(); });
    EXPECT_EQ(files.Read(files.xy),
              ended == Ended::Done ? "GRAPHMAGNETIC_XY:-500, -500, 2.500000,\r\n" : "before")
        << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 1);
}

}  // namespace
