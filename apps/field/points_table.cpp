#include "apps/field/points_table.h"

#include <QHeaderView>
#include <QScroller>
#include <cmath>

#include "apps/field/texts.h"

namespace tiltpole::field {
namespace {

enum Column { kNumber, kNorth, kEast, kHeight, kDeviation, kRemarks, kColumns };

constexpr int kRowHeight = 40;

double Deviation(const StoredPoint& point) {
  return std::sqrt(point.sigma_north * point.sigma_north + point.sigma_east * point.sigma_east +
                   point.sigma_height * point.sigma_height);
}

}  // namespace

PointsTable::PointsTable(const FieldModel& model, QWidget* parent)
    : QTableWidget(0, kColumns, parent), model_(model) {
  setObjectName("points");
  setHorizontalHeaderLabels(
      {tr("No."), tr("North"), tr("East"), tr("Height"), tr("± 1σ"), tr("Remarks")});
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::NoSelection);
  setFocusPolicy(Qt::NoFocus);
  setWordWrap(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalHeader()->hide();
  horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  horizontalHeader()->setSectionResizeMode(kRemarks, QHeaderView::Stretch);
  horizontalHeader()->setMinimumSectionSize(34);
  setMinimumHeight(84);
  QScroller::grabGesture(viewport(), QScroller::LeftMouseButtonGesture);
}

void PointsTable::Refresh() {
  if (shown_store_ != model_.Points()) {
    setRowCount(0);
    shown_ = 0;
    shown_store_ = model_.Points();
  }
  if (shown_store_ == nullptr) return;
  const auto& points = shown_store_->Points();
  for (; shown_ < points.size(); ++shown_) Insert(points[shown_]);
}

void PointsTable::Insert(const StoredPoint& point) {
  insertRow(0);
  const xyhCoordinate place = point.position ? *point.position : point.offset;
  const QString texts[kColumns] = {
      QString::number(point.number), Metres(place.x),       Metres(place.y), Metres(place.h),
      Metres(Deviation(point)),      FlagWords(point.flags)};
  for (int column = 0; column < kColumns; ++column) {
    auto* item = new QTableWidgetItem(texts[column]);
    const bool words = column == kRemarks;
    item->setTextAlignment((words ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    if (point.flags != 0) item->setBackground(QColor(255, 180, 0));
    setItem(0, column, item);
  }
  FitRow(0);
  scrollToTop();
}

void PointsTable::FitRow(int row) {
  resizeRowToContents(row);
  if (rowHeight(row) < kRowHeight) setRowHeight(row, kRowHeight);
}

// The remarks wrap at another place then.
void PointsTable::resizeEvent(QResizeEvent* event) {
  QTableWidget::resizeEvent(event);
  for (int row = 0; row < rowCount(); ++row) FitRow(row);
}

}  // namespace tiltpole::field
