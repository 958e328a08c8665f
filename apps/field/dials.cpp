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

QLabel* NewFigure(const char* name, QWidget* parent) {
  auto* figure = new QLabel(parent);
  figure->setObjectName(name);
  figure->setStyleSheet("font-size: 24px; font-weight: bold;");
  figure->setAlignment(Qt::AlignHCenter);
  return figure;
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
  layout->setColumnStretch(0, 6);
  layout->setColumnStretch(1, 3);
  layout->setColumnStretch(2, 2);
  layout->setColumnStretch(3, 2);
  layout->setRowStretch(1, 1);
}

void Dials::ShowNothing() {
  SetText(*heading_, QStringLiteral("–"));
  SetText(*tilt_, QStringLiteral("–"));
}

void Dials::Show(const Reading& reading) {
  SetText(*heading_, Degrees(reading.tip.Heading));
  SetText(*tilt_, Degrees(reading.tip.Tilt));
  if (std::isfinite(reading.tip.Heading)) compass_->SetValue(reading.tip.Heading);
  // A rising axis raises its value on the left gauge, where values rise to the top, and lowers it
  // on the right one, where they fall.
  along_->SetValue(std::clamp(kPlumbAlong + reading.raw.sensors.InclineX, 0.0, 180.0));
  across_->SetValue(std::clamp(kPlumbAcross - reading.raw.sensors.InclineY, 180.0, 360.0));
}

}  // namespace tiltpole::field
