#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QWidget>

#include "apps/field/field_model.h"

namespace tiltpole::field {

/// What came of a calibration: the verdict, how good headings are going to be, and the reasons with
/// what to do about them.
class VerdictView : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(VerdictView)
 public:
  VerdictView(FieldModel& model, QWidget* parent);

  void Refresh();

 private:
  void ShowOutcome(const CalibrationOutcome& outcome);
  static QString Headline(const CalibrationOutcome& outcome);
  static QString Figures(const CalibrationQuality& quality);

  FieldModel& model_;
  QLabel* verdict_;
  QProgressBar* working_;
  QLabel* reasons_;
};

}  // namespace tiltpole::field
