#include "apps/field/measure_page.h"

#include <QResizeEvent>

#include "apps/field/theme.h"

namespace tiltpole::field {
namespace {

// Stated, since texts that wrap make a layout take less than its parts need: the dials at their
// smallest, the flags, the figures and two lines of text.
constexpr int kReadingHeight = 390;

}  // namespace

MeasurePage::MeasurePage(FieldModel& model, NoticeBar& notices, QWidget* parent)
    : QWidget(parent),
      model_(model),
      reading_(new QWidget(this)),
      dials_(new Dials(reading_)),
      values_(new LiveValues(model, reading_)),
      point_bar_(new PointBar(model, notices, this)),
      table_(new PointsTable(model, this)) {
  auto* now = new QVBoxLayout(reading_);
  now->setContentsMargins(0, 0, 0, 0);
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
  halves_->addWidget(reading_);
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
  const bool wide = event->size().width() >= kWideWindow;
  halves_->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  // One above the other, the reading takes what it needs and the table what is left.
  halves_->setStretch(0, wide ? 1 : 0);
  reading_->setMinimumHeight(kReadingHeight);
  reading_->setMaximumHeight(wide ? QWIDGETSIZE_MAX : kReadingHeight);
}

}  // namespace tiltpole::field
