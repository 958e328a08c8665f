#include "robot.h"

#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace tiltpole_test {

Robot::Robot(tiltpole::field::MainWindow& window) : window_(window) {
  window_.resize(1280, 800);
  window_.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_, kPatience));
  window_.activateWindow();
}

void Robot::Expect(bool so, const char* name) {
  if (!so) throw std::runtime_error(std::string(name) + " is hidden or disabled");
}

void Robot::Click(const char* button) {
  auto* target = See<QPushButton>(button);
  Expect(WaitUntil([target] { return target->isEnabled(); }), button);
  QTest::mouseClick(target, Qt::LeftButton);
}

void Robot::HoldUntil(const char* button, const std::function<bool()>& so) {
  auto* target = See<QPushButton>(button);
  QTest::mousePress(target, Qt::LeftButton);
  EXPECT_TRUE(WaitUntil(so)) << button;
  QTest::mouseRelease(target, Qt::LeftButton);
}

void Robot::DragOnPad(QPoint from_middle) {
  auto* pad = See<QWidget>("pole_pad");
  const QPoint middle = pad->rect().center();
  QTest::mousePress(pad, Qt::LeftButton, Qt::NoModifier, middle);
  QTest::mouseMove(pad, middle + from_middle / 2);
  QTest::mouseMove(pad, middle + from_middle);
  QTest::mouseRelease(pad, Qt::LeftButton, Qt::NoModifier, middle + from_middle);
}

void Robot::Key(const char* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(See<QWidget>(widget), key, modifiers);
}

// Without a window manager a dialog that was closed can take the focus along, late, and a window
// without it is deaf to its shortcuts.
bool Robot::PressUntil(Qt::Key shortcut, const std::function<bool()>& so) {
  constexpr int kPresses = 5;
  constexpr int kReaction = 3000;  // [ms]
  for (int i = 0; i < kPresses; ++i) {
    window_.activateWindow();
    WaitUntil([this] { return window_.isActiveWindow(); });
    QTest::keyClick(&window_, shortcut);
    if (QTest::qWaitFor(so, kReaction)) return true;
  }
  return false;
}

// The dialog runs a loop of its own, so the answer has to be under way before it opens.
void Robot::AnswerFileDialog(const std::string& path) {
  auto* timer = new QTimer(&window_);
  QObject::connect(timer, &QTimer::timeout, &window_, [timer, path] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible()) return;
    auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
    // Without the focus the dialog puts the names of its list into the field.
    if (!name->hasFocus()) {
      dialog->activateWindow();
      name->setFocus();
      return;
    }
    timer->stop();
    timer->deleteLater();
    AgreeToReplacing(*dialog);
    name->clear();
    QTest::keyClicks(name, QString::fromStdString(path));
    QTest::keyClick(name, Qt::Key_Enter);
  });
  timer->start(50);
}

// The question comes up only where the file is there already.
void Robot::AgreeToReplacing(QFileDialog& dialog) {
  auto* timer = new QTimer(&dialog);
  QObject::connect(timer, &QTimer::timeout, &dialog, [] {
    auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (question != nullptr) question->button(QMessageBox::Yes)->click();
  });
  timer->start(50);
}

void Robot::ClickAndType(const char* button, const std::string& path) {
  AnswerFileDialog(path);
  Click(button);
}

// A menu runs a loop of its own, too.
void Robot::AnswerMenu(const char* button, int entry, const std::string& path) {
  auto* target = See<QPushButton>(button);
  if (!path.empty()) AnswerFileDialog(path);
  QTimer::singleShot(200, &window_, [target, entry] {
    for (int i = 0; i <= entry; ++i) QTest::keyClick(target->menu(), Qt::Key_Down);
    QTest::keyClick(target->menu(), Qt::Key_Enter);
  });
}

void Robot::ChooseFromMenu(const char* button, int entry, const std::string& path) {
  AnswerMenu(button, entry, path);
  QTest::mouseClick(See<QPushButton>(button), Qt::LeftButton);
}

void Robot::ChooseFromMenuByKeys(const char* button, int entry, const std::string& path) {
  AnswerMenu(button, entry, path);
  PressByKeys(button);
}

void Robot::PressByKeys(const char* button) {
  auto* target = See<QPushButton>(button);
  window_.activateWindow();
  WaitUntil([this] { return window_.isActiveWindow(); });
  constexpr int kWidgets = 50;
  for (int i = 0; i < kWidgets && window_.focusWidget() != target; ++i) {
    QTest::keyClick(&window_, Qt::Key_Tab);
  }
  Expect(window_.focusWidget() == target, button);
  QTest::keyClick(target, Qt::Key_Space);
}

bool Robot::WaitUntil(const std::function<bool()>& so) { return QTest::qWaitFor(so, kPatience); }

bool Robot::WaitForText(const char* label, const std::string& part) {
  const bool came = WaitUntil([&] { return Read(label).find(part) != std::string::npos; });
  if (!came) ADD_FAILURE() << label << " says '" << Read(label) << "', not '" << part << "'";
  return came;
}

void Robot::SetSpeed(double speed) {
  constexpr int kSpeeds = 5;
  for (int i = 0; i <= kSpeeds && window_.Model().Source()->Speed() != speed; ++i) Click("speed");
  EXPECT_EQ(window_.Model().Source()->Speed(), speed);
}

void Robot::LookAtBothSizes(const char* picture) {
  LookAt({480, 800}, picture);
  LookAt({1280, 800}, picture);
}

void Robot::LookAt(QSize size, const char* picture) {
  window_.resize(size);
  QTest::qWait(300);
  EXPECT_EQ(window_.size(), size) << picture << ": the window cannot be made so small";
  for (const auto* const button : window_.findChildren<QPushButton*>()) {
    if (!button->isVisible()) continue;
    const std::string name = button->objectName().toStdString();
    EXPECT_GE(button->height(), tiltpole::field::kTouchSize) << name;
    EXPECT_GE(button->width(), tiltpole::field::kTouchSize) << name;
    const int needed = button->fontMetrics().horizontalAdvance(button->text());
    EXPECT_GE(button->width(), needed + 8) << name << " has its text cut off at " << size.width();
    const QRect place(button->mapTo(&window_, QPoint()), button->size());
    EXPECT_TRUE(window_.rect().contains(place)) << name << " is outside of the window";
  }
  for (const auto* const label : window_.findChildren<QLabel*>()) {
    if (!label->isVisible() || label->text().isEmpty()) continue;
    const int needed =
        label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
    // The reasons may be longer than the screen; they scroll.
    if (label->objectName() == "reasons") continue;
    EXPECT_GE(label->height(), needed) << "'" << label->text().toStdString() << "' is cut off in "
                                       << picture << " at " << size.width();
  }
  for (const char* const dial : {"compass", "gauge_along", "gauge_across"}) {
    const auto* const control = window_.findChild<QWidget*>(dial);
    if (!control->isVisible()) continue;
    EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << dial;
    const auto* const flags = window_.findChild<QWidget*>("flag_still");
    EXPECT_LE(control->mapTo(&window_, QPoint(0, control->height())).y(),
              flags->mapTo(&window_, QPoint()).y())
        << dial << " is covered in " << picture << " at " << size.width();
  }
  const auto* const limit = window_.findChild<QWidget*>("limit");
  const auto* const guidance = window_.findChild<QWidget*>("guidance");
  if (limit->isVisible() && size.width() < tiltpole::field::kWideWindow) {
    EXPECT_LE(limit->mapTo(&window_, QPoint(0, limit->height())).y(),
              guidance->mapTo(&window_, QPoint()).y())
        << "the reading is covered in " << picture;
  }
  const QString folder = qEnvironmentVariable("TILTPOLE_SCREENSHOTS");
  if (folder.isEmpty()) return;
  const QString file =
      QStringLiteral("%1-%2x%3.png").arg(picture).arg(size.width()).arg(size.height());
  EXPECT_TRUE(window_.grab().save(QDir(folder).filePath(file))) << file.toStdString();
}

}  // namespace tiltpole_test
