#pragma once

// How everything looks: black on white for the sun, targets for gloves.

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QString>

namespace tiltpole::field {

/// The smallest side of anything that is touched [pixels].
inline constexpr int kTouchSize = 48;
/// From this width on there is room for two columns.
inline constexpr int kWideWindow = 800;

/// What a coloured label says; the words say it too.
enum class Tone { Neutral, Good, Caution, Bad };

void ApplyTheme(QApplication& application);

/// A button for gloves.
/// @param name  the object's name
QPushButton* NewButton(const QString& name, const QString& text, QWidget* parent);

/// Colours a label, when the tone is another one than before.
void SetTone(QLabel& label, Tone tone);
/// Sets a text, when it is another one than before: a label that is set is laid out again.
void SetText(QLabel& label, const QString& text);
void SetText(QPushButton& button, const QString& text);

}  // namespace tiltpole::field
