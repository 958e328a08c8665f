#include "apps/field/theme.h"

#include <QStyle>
#include <QStyleFactory>
#include <QVariant>

namespace tiltpole::field {
namespace {

constexpr const char* kStyleSheet = R"(
* { font-family: "DejaVu Sans"; font-size: 15px; color: black; }
QWidget { background: white; }
QPushButton, QComboBox, QLineEdit, QAbstractSpinBox {
  min-height: 44px; border: 2px solid black; border-radius: 4px; padding: 0 4px;
}
QPushButton { font-weight: bold; min-width: 48px; background: #e8e8e8; }
QPushButton:pressed, QPushButton:checked { background: black; color: white; }
QPushButton:disabled { color: #707070; border-color: #909090; background: white; }
QPushButton:focus { border: 3px solid #0040c0; }
QPushButton[role="main"] { background: #003c8f; color: white; }
QPushButton[role="main"]:pressed { background: black; }
QPushButton[role="main"]:disabled { background: white; color: #707070; }
QMenu::item { min-height: 48px; padding: 0 24px; font-weight: bold; }
QMenu { border: 2px solid black; }
QMenu::item:selected { background: black; color: white; }
QLabel[tone="good"] { background: #005a20; color: white; }
QLabel[tone="caution"] { background: #ffb400; color: black; }
QLabel[tone="bad"] { background: #b00000; color: white; }
QLabel[tone="neutral"] { background: #e8e8e8; color: black; }
QLabel[tone] { font-weight: bold; border-radius: 4px; }
QProgressBar { border: 2px solid black; min-height: 20px; max-height: 20px; text-align: center; }
QProgressBar::chunk { background: #7fb2ff; }
QHeaderView::section { background: #e8e8e8; font-weight: bold; border: 1px solid black; }
QTableView { gridline-color: black; border: 2px solid black; }
QScrollBar:vertical { width: 28px; background: #e8e8e8; }
QScrollBar::handle:vertical { background: #505050; min-height: 48px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
QToolButton { min-width: 40px; min-height: 40px; border: 1px solid black; }
QFileDialog QAbstractItemView::item { min-height: 44px; }
QScrollArea { border: none; }
)";

const char* NameOf(Tone tone) {
  switch (tone) {
    case Tone::Good:
      return "good";
    case Tone::Caution:
      return "caution";
    case Tone::Bad:
      return "bad";
    case Tone::Neutral:
      break;
  }
  return "neutral";
}

}  // namespace

void ApplyTheme(QApplication& application) {
  // One look wherever the host runs, whatever the desktop's colours are.
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  application.setStyleSheet(kStyleSheet);
}

QPushButton* NewButton(const QString& name, const QString& text, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(name);
  button->setMinimumHeight(kTouchSize);
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  return button;
}

void SetTone(QLabel& label, Tone tone) {
  const QString name = QString::fromLatin1(NameOf(tone));
  if (label.property("tone").toString() == name) return;
  label.setProperty("tone", name);
  label.setMargin(5);
  label.style()->unpolish(&label);
  label.style()->polish(&label);
}

void SetText(QLabel& label, const QString& text) {
  if (label.text() != text) label.setText(text);
}

void SetText(QPushButton& button, const QString& text) {
  if (button.text() == text) return;
  // A new text would take the button's key away.
  const QKeySequence key = button.shortcut();
  button.setText(text);
  button.setShortcut(key);
}

}  // namespace tiltpole::field
