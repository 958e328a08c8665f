#include "apps/field/turn_view.h"

#include <QHBoxLayout>
#include <QStringList>
#include <QVBoxLayout>

#include "apps/field/theme.h"
#include "apps/field/turn_plot.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace tiltpole::field {

TurnView::TurnView(FieldModel& model, SampleSet turn, QWidget* parent)
    : QWidget(parent), model_(model), turn_(turn) {
  const bool level = turn == SampleSet::Horizontal;
  auto* title = new QLabel(level ? tr("1  Upright, about its axis") : tr("2  End over end"), this);
  title->setStyleSheet("font-weight: bold;");
  ring_ = new CoverageRing(model.Turn(turn), this);
  state_ = new QLabel(this);
  state_->setObjectName(level ? "state_horizontal" : "state_vertical");
  state_->setWordWrap(true);
  state_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  record_ = NewButton(level ? "record_horizontal" : "record_vertical", QString(), this);
  record_->setCheckable(true);

  auto* progress = new QHBoxLayout;
  progress->addWidget(ring_, 3);
  progress->addWidget(state_, 3);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(title);
  layout->addWidget(NewPlot(), 2);
  layout->addLayout(progress, 1);
  layout->addWidget(record_);

  connect(record_, &QPushButton::clicked, this, [this](bool on) {
    model_.Record(on ? std::optional(turn_) : std::nullopt);
    Refresh();
  });
}

QWidget* TurnView::NewPlot() {
  const auto keep = [this](auto* plot) {
    refresh_plot_ = [plot] { plot->Refresh(); };
    return plot;
  };
  if (turn_ == SampleSet::Horizontal) {
    return keep(new TurnPlot<CGraphMagnetic_XY>(model_.Turn(turn_), this));
  }
  return keep(new TurnPlot<CGraphMagnetic_XZ>(model_.Turn(turn_), this));
}

QString TurnView::Missing() const {
  constexpr int kMostRanges = 2;
  const auto ranges = model_.Turn(turn_).Missing();
  if (ranges.empty()) return tr("All directions covered");
  QStringList texts;
  for (const auto& [from, to] : ranges) {
    if (texts.size() < kMostRanges) texts += tr("%1–%2°").arg(from).arg(to);
  }
  const int more = static_cast<int>(ranges.size()) - kMostRanges;
  if (more > 0) texts += tr("and %1 more").arg(more);
  return tr("Missing: %1").arg(texts.join(QStringLiteral(", ")));
}

void TurnView::Refresh() {
  const TurnRecording& turn = model_.Turn(turn_);
  refresh_plot_();
  ring_->Refresh();
  const int samples = static_cast<int>(turn.Samples().size());
  SetText(*state_, samples == 0
                       ? tr("No samples yet")
                       : tr("Samples: %1").arg(samples) + QStringLiteral("\n") + Missing());
  // A session file says itself what its samples are for.
  const bool filling = model_.Filling() == turn_;
  record_->setChecked(filling || model_.Recording() == turn_);
  record_->setEnabled(model_.Source() != nullptr && !model_.Run().IsRunning());
  SetText(*record_, record_->isChecked()             ? tr("Stop")
                    : turn_ == SampleSet::Horizontal ? tr("Record turn 1")
                                                     : tr("Record turn 2"));
}

}  // namespace tiltpole::field
