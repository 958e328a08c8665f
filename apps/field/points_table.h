#pragma once

#include <QCoreApplication>
#include <QTableWidget>

#include "apps/field/field_model.h"

namespace tiltpole::field {

/// The stored points, the latest on top.
class PointsTable : public QTableWidget {
  Q_DECLARE_TR_FUNCTIONS(PointsTable)
 public:
  PointsTable(const FieldModel& model, QWidget* parent);

  void Refresh();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitRow(int row);
  void Insert(const StoredPoint& point);

  const FieldModel& model_;
  const PointStore* shown_store_ = nullptr;
  std::size_t shown_ = 0;
};

}  // namespace tiltpole::field
