#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QWidget>

#include "apps/field/theme.h"

namespace tiltpole::field {

/// What the operator must have seen: stays over the page until it is acknowledged, the oldest
/// first.
class NoticeBar : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(NoticeBar)
 public:
  explicit NoticeBar(QWidget* parent);

  void Say(const QString& text, Tone tone);
  /// Lies over the window from there on, as high as its text needs, so that nothing else moves.
  void PlaceAt(QPoint corner, int width);

 private:
  struct Notice {
    QString text;
    Tone tone;
  };
  void ShowFirst();

  QLabel* text_;
  QList<Notice> notices_;
  QPoint corner_;
};

}  // namespace tiltpole::field
