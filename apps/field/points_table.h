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
  /// No more than it needs: what is left over is its stretch. Beside texts that wrap, a layout
  /// takes the hint for the least.
  QSize sizeHint() const override { return minimumSize(); }
  QSize minimumSizeHint() const override { return minimumSize(); }

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
