#include "apps/field/measure_page.h"

#include <QResizeEvent>

#include "apps/field/theme.h"

namespace tiltpole::field {

MeasurePage::MeasurePage(FieldModel& model, NoticeBar& notices, QWidget* parent)
    : QWidget(parent),
      model_(model),
      dials_(new Dials(this)),
      values_(new LiveValues(model, this)),
      point_bar_(new PointBar(model, notices, this)),
      table_(new PointsTable(model, this)) {
  auto* now = new QVBoxLayout;
  now->setSpacing(4);
  now->addWidget(dials_, 1);
  now->addWidget(values_);
  auto* stored = new QVBoxLayout;
  stored->setSpacing(4);
  stored->addWidget(point_bar_);
  stored->addWidget(table_, 1);
  halves_ = new QBoxLayout(QBoxLayout::TopToBottom, this);
  halves_->setContentsMargins(0, 0, 0, 0);
  halves_->setSpacing(4);
  halves_->addLayout(now, 1);
  halves_->addLayout(stored, 1);
}

void MeasurePage::Refresh() {
  if (model_.Live()) {
    dials_->Show(*model_.Live());
  } else {
    dials_->ShowNothing();
  }
  values_->Refresh();
  point_bar_->Refresh();
  table_->Refresh();
}

void MeasurePage::resizeEvent(QResizeEvent* event) {
  halves_->setDirection(event->size().width() < kWideWindow ? QBoxLayout::TopToBottom
                                                            : QBoxLayout::LeftToRight);
}

}  // namespace tiltpole::field
