#include "apps/field/verdict_view.h"

#include <QScrollArea>
#include <QScroller>
#include <QVBoxLayout>

#include "apps/field/texts.h"
#include "apps/field/theme.h"

namespace tiltpole::field {
namespace {

Tone ToneOf(Verdict verdict) {
  if (verdict == Verdict::Good) return Tone::Good;
  return verdict == Verdict::Unusable ? Tone::Bad : Tone::Caution;
}

}  // namespace

VerdictView::VerdictView(FieldModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      verdict_(new QLabel(this)),
      working_(new QProgressBar(this)),
      reasons_(new QLabel(this)) {
  verdict_->setObjectName("verdict");
  verdict_->setWordWrap(true);
  verdict_->setMinimumHeight(34);
  working_->setRange(0, 0);
  working_->setTextVisible(false);
  reasons_->setObjectName("reasons");
  reasons_->setWordWrap(true);
  reasons_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  auto* area = new QScrollArea(this);
  area->setWidget(reasons_);
  area->setWidgetResizable(true);
  area->setMinimumHeight(60);
  QScroller::grabGesture(area->viewport(), QScroller::LeftMouseButtonGesture);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(verdict_);
  layout->addWidget(working_);
  layout->addWidget(area, 1);
}

void VerdictView::Refresh() {
  working_->setVisible(model_.Run().IsRunning());
  if (model_.Run().IsRunning()) {
    SetText(*verdict_, tr("Working it out …"));
    SetTone(*verdict_, Tone::Neutral);
    SetText(*reasons_, QString());
  } else if (model_.Outcome()) {
    ShowOutcome(*model_.Outcome());
  } else {
    SetText(*verdict_, CalibrationText(model_.Calibration()));
    SetTone(*verdict_, model_.Calibration().calibrated ? Tone::Caution : Tone::Bad);
    SetText(*reasons_, tr("Turn the pole once around, slowly: first upright about its own axis, "
                          "then end over end about the sensor's y axis. Then press Adjust."));
  }
}

QString VerdictView::Headline(const CalibrationOutcome& outcome) {
  if (outcome.judged_only) {
    return tr("These parameters for this pole: %1").arg(VerdictText(outcome.quality.Result));
  }
  if (outcome.fitted) return tr("Calibrated: %1").arg(VerdictText(outcome.quality.Result));
  return tr("The calibration failed. The parameters from before stay in force.");
}

// How much of each turn is covered stands in the rings beside it, by the screening's measure.
QString VerdictView::Figures(const CalibrationQuality& quality) {
  return tr("Expected heading error: A %1, B %2 (largest %3, %4).")
      .arg(Degrees(quality.A.Heading.RootMeanSquare), Degrees(quality.B.Heading.RootMeanSquare),
           Degrees(quality.A.Heading.Largest), Degrees(quality.B.Heading.Largest));
}

void VerdictView::ShowOutcome(const CalibrationOutcome& outcome) {
  SetText(*verdict_, Headline(outcome));
  SetTone(*verdict_, ToneOf(outcome.quality.Result));
  QString text;
  for (const QualityReason& reason : outcome.quality.Reasons) {
    text += QStringLiteral("• ") + Translated(reason.Sentence) + QStringLiteral("\n");
  }
  if (outcome.quality.Calibrated) text += Figures(outcome.quality);
  SetText(*reasons_, text.trimmed());
}

}  // namespace tiltpole::field
