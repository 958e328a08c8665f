#include "apps/field/dials.h"

#include <QGridLayout>
#include <algorithm>
#include <cmath>

#include "apps/field/texts.h"
#include "apps/field/theme.h"

namespace tiltpole::field {
namespace {

constexpr int kPlumbAlong = 90;
constexpr int kPlumbAcross = 270;

QLabel* NewCaption(const QString& text, QWidget* parent) {
  auto* caption = new QLabel(text, parent);
  caption->setAlignment(Qt::AlignHCenter);
  return caption;
}

QLabel* NewFigure(const QString& name, QWidget* parent) {
  auto* figure = new QLabel(parent);
  figure->setObjectName(name);
  figure->setStyleSheet("font-size: 24px; font-weight: bold;");
  figure->setAlignment(Qt::AlignHCenter);
  return figure;
}

// The place of a dial while it has nothing to show: it can show no value but a number.
QLabel* NewStandIn(QWidget& dial, QWidget* parent) {
  QLabel* const instead = NewFigure("instead_of_" + dial.objectName(), parent);
  instead->setAlignment(Qt::AlignCenter);
  instead->setText(QStringLiteral("–"));
  QSizePolicy policy = dial.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  dial.setSizePolicy(policy);
  return instead;
}

void SetShown(QWidget& dial, QLabel& instead, bool shown) {
  dial.setVisible(shown);
  instead.setVisible(!shown);
}

}  // namespace

Dials::Dials(QWidget* parent)
    : QWidget(parent),
      compass_(new ResizingDial<CGraphCompass>),
      along_(new ResizingDial<CGraphIncline_Left>),
      across_(new ResizingDial<CGraphIncline_Right>),
      heading_(NewFigure("heading", this)),
      tilt_(NewFigure("tilt", this)) {
  compass_->setObjectName("compass");
  along_->setObjectName("gauge_along");
  across_->setObjectName("gauge_across");
  no_compass_ = NewStandIn(*compass_, this);
  no_along_ = NewStandIn(*along_, this);
  no_across_ = NewStandIn(*across_, this);
  constexpr int kSmallestDial = 200;  // the compass' labels touch each other below
  compass_->setMinimumSize(kSmallestDial, kSmallestDial);
  along_->setMinimumSize(66, kSmallestDial - 20);
  across_->setMinimumSize(66, kSmallestDial - 20);
  const Color white = Rgb(255, 255, 255);
  compass_->SetMeterBackColor(white);
  along_->SetMeterBackColor(white);
  across_->SetMeterBackColor(white);
  along_->SetFix(kPlumbAlong);
  across_->SetFix(kPlumbAcross);

  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(compass_, 0, 0, 2, 1);
  layout->addWidget(no_compass_, 0, 0, 2, 1);
  auto* figures = new QVBoxLayout;
  figures->addStretch(2);
  figures->addWidget(NewCaption(tr("Heading"), this));
  figures->addWidget(heading_);
  figures->addStretch(1);
  figures->addWidget(NewCaption(tr("Tilt"), this));
  figures->addWidget(tilt_);
  figures->addStretch(2);
  layout->addLayout(figures, 0, 1, 2, 1);
  layout->addWidget(NewCaption(tr("Along"), this), 0, 2);
  layout->addWidget(NewCaption(tr("Across"), this), 0, 3);
  layout->addWidget(along_, 1, 2);
  layout->addWidget(across_, 1, 3);
  layout->addWidget(no_along_, 1, 2);
  layout->addWidget(no_across_, 1, 3);
  layout->setColumnStretch(0, 6);
  layout->setColumnStretch(1, 3);
  layout->setColumnStretch(2, 2);
  layout->setColumnStretch(3, 2);
  layout->setRowStretch(1, 1);
  ShowNothing();
}

void Dials::SetDialsShown(bool compass, bool gauges) {
  SetShown(*compass_, *no_compass_, compass);
  SetShown(*along_, *no_along_, gauges);
  SetShown(*across_, *no_across_, gauges);
}

// An old needle looks like a live one, and the one that a dial begins with, too.
void Dials::ShowNothing() {
  SetText(*no_compass_, tr("No samples"));
  SetDialsShown(false, false);
  SetText(*heading_, QStringLiteral("–"));
  SetText(*tilt_, QStringLiteral("–"));
}

void Dials::Show(const Reading& reading) {
  SetText(*heading_, Degrees(reading.tip.Heading));
  SetText(*tilt_, Degrees(reading.tip.Tilt));
  const bool has_heading = std::isfinite(reading.tip.Heading);
  if (has_heading) compass_->SetValue(reading.tip.Heading);
  SetText(*no_compass_, tr("No heading"));
  SetDialsShown(has_heading, true);
  // A rising axis raises its value on the left gauge, where values rise to the top, and lowers it
  // on the right one, where they fall.
  along_->SetValue(std::clamp(kPlumbAlong + reading.raw.sensors.InclineX, 0.0, 180.0));
  across_->SetValue(std::clamp(kPlumbAcross - reading.raw.sensors.InclineY, 180.0, 360.0));
}

}  // namespace tiltpole::field
