#include <QApplication>
#include <QMessageBox>
#include <QThread>
#include <QTimer>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/platform/message_box.h"
#include "tiltpole/platform/window.h"

namespace {

using tiltpole::Brush;
using tiltpole::DrawingContext;
using tiltpole::Rect;
using tiltpole::Rgb;

constexpr std::uint32_t kVisible = 0x10000000;
constexpr std::uint32_t kBothEdges = 0x20200;

class BlueLabel : public tiltpole::StaticWindow {
 public:
  void OnPaint() override {
    calls.emplace_back("paint");
    BeginPaint()->FillRectangle(GetClientRect(), Brush{Rgb(0, 0, 255)});
    EndPaint();
  }
  int OnEraseBkgnd(DrawingContext* /*context*/) override {
    calls.emplace_back("erase");
    return 0;
  }
  void PreSubclassWindow() override { calls.emplace_back("subclass"); }
  std::vector<std::string> calls;
};

class BlueChild : public tiltpole::ChildWindow {
 public:
  void OnPaint() override {
    BeginPaint()->FillRectangle(GetClientRect(), Brush{Rgb(0, 0, 255)});
    EndPaint();
    ++paints;
  }
  int paints = 0;
};

QRgb ShownPixel(QWidget& widget, int x, int y) {
  const QImage shown = widget.grab().toImage();
  const double scale = widget.devicePixelRatioF();
  return shown.pixel(static_cast<int>((x + 0.5) * scale), static_cast<int>((y + 0.5) * scale));
}

TEST(QtStaticWindow, IsSubclassedOnceAndErasedAndPaintedWhenFirstShown) {
  BlueLabel label;
  label.resize(20, 10);
  EXPECT_EQ(ShownPixel(label, 0, 0), qRgb(0, 0, 255));
  EXPECT_EQ(label.calls, (std::vector<std::string>{"subclass", "erase", "paint"}));
}

TEST(QtStaticWindow, IsSubclassedOnceHoweverOftenItIsPolished) {
  BlueLabel label;
  QEvent polish(QEvent::Polish);
  QApplication::sendEvent(&label, &polish);
  QApplication::sendEvent(&label, &polish);
  EXPECT_EQ(label.calls, (std::vector<std::string>{"subclass"}));
}

TEST(QtStaticWindow, WhatIsDrawnAtOnceStaysWithoutAPaint) {
  BlueLabel label;
  label.resize(20, 10);
  label.grab();
  label.calls.clear();

  DrawingContext* context = label.TakeContext();
  ASSERT_NE(context, nullptr);
  context->FillRectangle({0, 0, 5, 5}, Brush{Rgb(255, 0, 0)});
  label.ReleaseContext(context);

  EXPECT_EQ(ShownPixel(label, 2, 2), qRgb(255, 0, 0));
  EXPECT_EQ(ShownPixel(label, 12, 2), qRgb(0, 0, 255));
  EXPECT_TRUE(label.calls.empty());
}

TEST(QtStaticWindow, InvalidatingPaintsAgainAndErasesOnlyWhenAsked) {
  BlueLabel label;
  label.resize(20, 10);
  label.grab();
  label.calls.clear();
  label.Invalidate(false);
  label.grab();
  EXPECT_EQ(label.calls, (std::vector<std::string>{"paint"}));
  label.calls.clear();
  label.Invalidate(true);
  label.Invalidate(false);
  label.grab();
  EXPECT_EQ(label.calls, (std::vector<std::string>{"erase", "paint"}));
}

TEST(QtStaticWindow, AChangeOfSizePaintsAgain) {
  BlueLabel label;
  label.resize(20, 10);
  label.grab();
  label.calls.clear();
  label.resize(40, 30);
  EXPECT_EQ(ShownPixel(label, 39, 29), qRgb(0, 0, 255));
  EXPECT_EQ(label.calls, (std::vector<std::string>{"erase", "paint"}));
}

TEST(QtStaticWindow, AClientAreaWithoutPixelsIsPaintedWithoutHarm) {
  BlueLabel label;
  label.resize(0, 0);
  label.grab();
  label.ReleaseContext(label.TakeContext());
  EXPECT_EQ(label.GetClientRect(), (Rect{0, 0, 0, 0}));
}

// Leaves the erasing to the base, as a control does that paints only a part of itself.
class BareLabel : public tiltpole::StaticWindow {
 public:
  void OnPaint() override {
    BeginPaint();
    EndPaint();
  }
};

TEST(QtStaticWindow, IsErasedInTheColourOfItsDialog) {
  BareLabel label;
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(10, 20, 30));
  label.setPalette(palette);
  label.resize(20, 10);
  EXPECT_EQ(ShownPixel(label, 0, 0), qRgb(10, 20, 30));
  EXPECT_EQ(ShownPixel(label, 19, 9), qRgb(10, 20, 30));
}

TEST(QtStaticWindow, TakesBackNoContextWithoutHarm) {
  BlueLabel label;
  label.resize(20, 10);
  label.grab();
  label.calls.clear();
  label.ReleaseContext(nullptr);
  label.grab();
  EXPECT_TRUE(label.calls.empty());
}

// A label that has something to say to screen readers, as the controls do.
class SpeakingLabel : public BlueLabel {
 public:
  std::wstring AccessibleName() const override { return L"Heading"; }
  std::wstring AccessibleValue() const override { return value; }
  std::wstring value = L"12 degrees";
};

TEST(QtStaticWindow, TellsScreenReadersItsNameAndEachNewValue) {
  SpeakingLabel label;
  label.grab();
  EXPECT_EQ(label.accessibleName(), "Heading");
  EXPECT_EQ(label.accessibleDescription(), "12 degrees");
  label.value = L"13 degrees";
  label.AnnounceValue();
  EXPECT_EQ(label.accessibleDescription(), "13 degrees");
}

TEST(QtStaticWindow, LeavesWhatTheHostTellsScreenReadersAsItIs) {
  SpeakingLabel label;
  label.setAccessibleName("Course");
  label.setAccessibleDescription("Where the boat goes");
  label.grab();
  label.AnnounceValue();
  EXPECT_EQ(label.accessibleName(), "Course");
  EXPECT_EQ(label.accessibleDescription(), "Where the boat goes");
}

TEST(QtStaticWindow, LeavesWhatTheHostTellsLaterToo) {
  SpeakingLabel label;
  label.grab();
  label.setAccessibleName("Course");
  label.setAccessibleDescription("Where the boat goes");
  label.value = L"13 degrees";
  label.AnnounceValue();
  EXPECT_EQ(label.accessibleName(), "Course");
  EXPECT_EQ(label.accessibleDescription(), "Where the boat goes");
}

TEST(QtStaticWindow, GivesALayoutItsPreferredSize) {
  const BlueLabel label;
  EXPECT_EQ(label.sizeHint(), QSize(200, 200));
}

TEST(QtChildWindow, IsNoWindowBeforeItIsCreated) {
  BlueChild child;
  child.resize(30, 30);
  child.Invalidate(true);
  child.grab();
  EXPECT_EQ(child.paints, 0);
  EXPECT_EQ(child.TakeContext(), nullptr);
  EXPECT_EQ(child.GetClientRect(), (Rect{0, 0, 0, 0}));
}

TEST(QtChildWindow, TakesItsPlaceInTheParentWithASunkenFrameOutsideOfTheClientArea) {
  QWidget parent;
  parent.resize(100, 100);
  auto* child = new BlueChild;  // the parent deletes it
  ASSERT_TRUE(child->CreateChild(L"Class", kBothEdges, kVisible, {10, 20, 50, 50}, &parent, 7));
  EXPECT_EQ(child->parentWidget(), &parent);
  EXPECT_EQ(child->geometry(), QRect(10, 20, 40, 30));
  EXPECT_EQ(child->GetClientRect(), (Rect{0, 0, 34, 24}));
  EXPECT_EQ(ShownPixel(*child, 3, 3), qRgb(0, 0, 255));
  EXPECT_EQ(ShownPixel(*child, 36, 26), qRgb(0, 0, 255));
  EXPECT_NE(ShownPixel(*child, 0, 0), qRgb(0, 0, 255));
  EXPECT_NE(ShownPixel(*child, 39, 29), qRgb(0, 0, 255));
}

TEST(QtChildWindow, IsNamedAfterItsNumberUnlessTheHostHasNamedIt) {
  BlueChild child;
  child.CreateChild(L"Class", 0, 0, {0, 0, 10, 10}, nullptr, 7);
  EXPECT_EQ(child.objectName(), "7");
  BlueChild named;
  named.setObjectName("plot");
  named.CreateChild(L"Class", 0, 0, {0, 0, 10, 10}, nullptr, 7);
  EXPECT_EQ(named.objectName(), "plot");
}

TEST(QtChildWindow, IsCreatedOnce) {
  BlueChild child;
  EXPECT_TRUE(child.CreateChild(L"Class", 0, 0, {0, 0, 10, 10}, nullptr, 1));
  EXPECT_FALSE(child.CreateChild(L"Class", 0, 0, {0, 0, 20, 20}, nullptr, 1));
  EXPECT_EQ(child.GetClientRect(), (Rect{0, 0, 10, 10}));
}

// Presses the button of the box that comes up, and keeps what it said.
struct BoxReader {
  QString title;
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;

  void ReadNextBox() {
    QTimer::singleShot(0, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return ReadNextBox();
      title = box->windowTitle();
      text = box->text();
      icon = box->icon();
      box->accept();
    });
  }
};

TEST(QtMessages, ComeUpInAModalBoxOnceAControlExists) {
  const BlueLabel label;
  BoxReader reader;
  reader.ReadNextBox();
  tiltpole::detail::ShowMessageBox(L"The turn has holes", L"Warning", tiltpole::MessageIcon::Stop);
  EXPECT_EQ(reader.title, "Warning");
  EXPECT_EQ(reader.text, "The turn has holes");
  EXPECT_EQ(reader.icon, QMessageBox::Critical);
}

TEST(QtMessages, FromAnotherThreadComeUpOnTheThreadOfTheWindows) {
  const BlueLabel label;
  BoxReader reader;
  reader.ReadNextBox();
  QThread* worker = QThread::create([] {
    tiltpole::detail::ShowMessageBox(L"From behind", L"Warning",
                                     tiltpole::MessageIcon::Exclamation);
  });
  QEventLoop loop;
  QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
  worker->start();
  loop.exec();
  worker->wait();
  delete worker;
  EXPECT_EQ(reader.text, "From behind");
  EXPECT_EQ(reader.icon, QMessageBox::Warning);
}

}  // namespace
