// Qt is not written for exceptions: where a paint runs out of memory, none may come out of it into
// the loop of the application, and the next paint shows the whole picture. Where an operation of
// the host does, it is the host that std::bad_alloc reaches.

#include <QApplication>
#include <QImage>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"

namespace {

using tiltpole::CGraphCompass;
using tiltpole::CGraphMagnetic_XY;
using tiltpole_test::Ended;
using tiltpole_test::FailAllocationAfter;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::RunWithFailure;
using tiltpole_test::StopFailing;

// Small: Qt composes tall pictures in threads of its own, which work on when it
// runs out of memory in the middle of starting them.
void Fill(CGraphCompass& compass) {
  compass.resize(60, 45);
  compass.SetValue(200.0);
  compass.SetFix(210);
}

void Fill(CGraphMagnetic_XY& plot) {
  plot.Create(L"", L"", 0, {0, 0, 60, 45}, nullptr, 1);
  for (int i = 0; i < 10; ++i) plot.AddTrackPoint(i * 35, i * 25 - 400, 0);
  plot.ZoomAll();  // whatever the view of the run before was
}

void Change(CGraphCompass& compass) {
  compass.SetFix(30);
  compass.SetValue(20.0);
}

void Change(CGraphMagnetic_XY& plot) {
  plot.AddTrackPoint(500, -300, 0);
  plot.ZoomAll();
}

void DrawAnew(CGraphCompass& compass) { compass.ReconstructControl(); }

void DrawAnew(CGraphMagnetic_XY& plot) {
  plot.InvalidateCtrl();
  plot.Invalidate(true);
}

// Qt hands on what is asked for within a paint in several rounds.
void LetPaint() {
  for (int round = 0; round < 10; ++round) QApplication::processEvents();
}

// A control of which one paint runs out of memory.
template <class Control>
class Starved : public Control {
 public:
  void OnPaint() override {
    ++paints;
    if (after < 0) return Control::OnPaint();
    FailAllocationAfter(std::exchange(after, -1));
    Control::OnPaint();
    ended = StopFailing() ? Ended::Coped : Ended::Done;
  }
  long after = -1;
  int paints = 0;
  Ended ended = Ended::Thrown;
};

template <class Control>
class QtAllocations : public ::testing::Test {};

using Controls = ::testing::Types<CGraphCompass, CGraphMagnetic_XY>;
struct ControlNames {
  template <class Control>
  static std::string GetName(int index) {
    return index == 0 ? "Compass" : "Plot";
  }
};
TYPED_TEST_SUITE(QtAllocations, Controls, ControlNames);

TYPED_TEST(QtAllocations, APaintThatFailsIsFollowedByAWholeOne) {
  TypeParam undisturbed;
  Fill(undisturbed);
  const QImage whole = undisturbed.grab().toImage();
  const long failures = FailEachAllocation([&](long after) {
    Starved<TypeParam> control;
    Fill(control);
    control.after = after;
    control.show();
    LetPaint();
    EXPECT_EQ(control.paints, control.ended == Ended::Thrown ? 2 : 1) << "after " << after;
    EXPECT_EQ(control.grab().toImage(), whole) << "after " << after;
    return control.ended;
  });
  EXPECT_GT(failures, 10);
}

TYPED_TEST(QtAllocations, AChangeThatFailsLeavesAPictureThatCanBePainted) {
  const long failures = FailEachAllocation([&](long after) {
    TypeParam control;
    Fill(control);
    control.show();
    LetPaint();
    const Ended ended = RunWithFailure(after, [&] { Change(control); });
    control.Invalidate(false);
    const QImage next = control.grab().toImage();
    DrawAnew(control);
    EXPECT_EQ(next, control.grab().toImage()) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 5);
}

TYPED_TEST(QtAllocations, AWindowThatIsMadeReadyWithoutMemoryIsPaintedAllTheSame) {
  TypeParam undisturbed;
  Fill(undisturbed);
  const QImage whole = undisturbed.grab().toImage();
  const long failures = FailEachAllocation([&](long after) {
    TypeParam control;
    QEvent polish(QEvent::Polish);
    const Ended ended = RunWithFailure(after, [&] { QApplication::sendEvent(&control, &polish); });
    EXPECT_NE(ended, Ended::Thrown) << "after " << after;
    Fill(control);
    EXPECT_EQ(control.grab().toImage(), whole) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 1);
}

}  // namespace
