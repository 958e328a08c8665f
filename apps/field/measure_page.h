#pragma once

#include <QBoxLayout>
#include <QCoreApplication>
#include <QWidget>

#include "apps/field/dials.h"
#include "apps/field/live_values.h"
#include "apps/field/point_bar.h"
#include "apps/field/points_table.h"

namespace tiltpole::field {

/// The reading as it is now, and the points.
class MeasurePage : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(MeasurePage)
 public:
  MeasurePage(FieldModel& model, NoticeBar& notices, QWidget* parent);

  void Refresh();
  PointBar& Points() { return *point_bar_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  FieldModel& model_;
  QWidget* reading_;
  Dials* dials_;
  LiveValues* values_;
  PointBar* point_bar_;
  PointsTable* table_;
  QBoxLayout* halves_;
};

}  // namespace tiltpole::field
