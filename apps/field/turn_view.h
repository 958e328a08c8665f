#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <functional>

#include "apps/field/coverage_ring.h"
#include "apps/field/field_model.h"

namespace tiltpole::field {

/// One turn on the Calibrate page: its plot, its ring, what is missing, and the button that
/// records it.
class TurnView : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(TurnView)
 public:
  TurnView(FieldModel& model, SampleSet turn, QWidget* parent);

  void Refresh();

 private:
  QString Missing() const;
  QWidget* NewPlot();

  FieldModel& model_;
  SampleSet turn_;
  std::function<void()> refresh_plot_;
  CoverageRing* ring_;
  QLabel* state_;
  QPushButton* record_;
};

}  // namespace tiltpole::field
