#pragma once

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QWidget>
#include <array>

#include "apps/field/field_model.h"

namespace tiltpole::field {

/// The figures of the last reading: offset, position, standard deviations, what limits
/// them, and the three things that must be right before a point is worth storing.
class LiveValues : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(LiveValues)
 public:
  LiveValues(const FieldModel& model, QWidget* parent);

  void Refresh();

 private:
  using Row = std::array<QLabel*, 3>;

  QLayout* NewFlags();
  QLayout* NewFigures();
  Row NewRow(QGridLayout& grid, int row, const QString& title, const char* name);
  void ShowFlags();
  void ShowFigures(const Reading& reading);
  void ShowNothing();

  const FieldModel& model_;
  QLabel* still_;
  QLabel* magnetic_;
  QLabel* calibration_;
  Row offset_{};
  Row position_{};
  Row deviation_{};
  QLabel* limit_;
};

}  // namespace tiltpole::field
