#pragma once

// An operator with a mouse and a keyboard.

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <string>

#include "apps/field/main_window.h"

namespace tiltpole_test {

/// Generous, since test machines are busy; a test that passes never waits that long.
inline constexpr int kPatience = 30000;

class Robot {
 public:
  explicit Robot(tiltpole::field::MainWindow& window);

  /// The widget of that name; ends the test when it is missing, or hidden for long.
  template <typename Widget>
  Widget* See(const char* name) {
    auto* widget = window_.findChild<Widget*>(name);
    Expect(widget != nullptr && WaitUntil([widget] { return widget->isVisible(); }), name);
    return widget;
  }
  std::string Read(const char* label) { return See<QLabel>(label)->text().toStdString(); }

  void Click(const char* button);
  /// Holds a button down until something is so.
  void HoldUntil(const char* button, const std::function<bool()>& so);
  void DragOnPad(QPoint from_middle);
  void Key(const char* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Presses a shortcut of the window, again where nothing came of it.
  bool PressUntil(Qt::Key shortcut, const std::function<bool()>& so);
  /// Clicks a button that asks for a file, types the file's name, and agrees to replacing it.
  void ClickAndType(const char* button, const std::string& path);
  void ChooseFromMenu(const char* button, int entry, const std::string& path = {});
  /// Goes to a button by the tabulator and presses it.
  void PressByKeys(const char* button);
  void ChooseFromMenuByKeys(const char* button, int entry, const std::string& path);

  bool WaitUntil(const std::function<bool()>& so);
  bool WaitForText(const char* label, const std::string& part);
  /// Goes through the speeds until that one is set.
  void SetSpeed(double speed);

  /// At both sizes: nothing is too small to touch or cut off; a picture, where they are asked for.
  void LookAtBothSizes(const char* picture);

 private:
  static void Expect(bool so, const char* name);
  void AnswerMenu(const char* button, int entry, const std::string& path);
  void AnswerFileDialog(const std::string& path);
  static void AgreeToReplacing(QFileDialog& dialog);
  void LookAt(QSize size, const char* picture);

  tiltpole::field::MainWindow& window_;
};

}  // namespace tiltpole_test
