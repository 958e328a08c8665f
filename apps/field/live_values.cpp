#include "apps/field/live_values.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "apps/field/texts.h"
#include "apps/field/theme.h"

namespace tiltpole::field {
namespace {

QLabel* NewFlag(const char* name, QWidget* parent) {
  auto* flag = new QLabel(parent);
  flag->setObjectName(name);
  flag->setAlignment(Qt::AlignCenter);
  flag->setWordWrap(true);
  flag->setMinimumHeight(40);
  SetTone(*flag, Tone::Neutral);
  return flag;
}

Tone ToneOf(const CalibrationState& state) {
  if (!state.calibrated) return Tone::Bad;
  return state.verdict == Verdict::Good ? Tone::Good : Tone::Caution;
}

}  // namespace

LiveValues::LiveValues(const FieldModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      still_(NewFlag("flag_still", this)),
      magnetic_(NewFlag("flag_magnetic", this)),
      calibration_(NewFlag("flag_calibration", this)),
      limit_(new QLabel(this)) {
  limit_->setObjectName("limit");
  limit_->setWordWrap(true);
  limit_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  limit_->setFixedHeight(38);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addLayout(NewFlags());
  layout->addLayout(NewFigures());
  layout->addWidget(limit_);
}

QLayout* LiveValues::NewFlags() {
  auto* flags = new QHBoxLayout;
  flags->setSpacing(4);
  flags->addWidget(still_, 1);
  flags->addWidget(magnetic_, 1);
  flags->addWidget(calibration_, 1);
  return flags;
}

QLayout* LiveValues::NewFigures() {
  auto* grid = new QGridLayout;
  grid->setSpacing(2);
  const QString titles[] = {tr("metres"), tr("North"), tr("East"), tr("Height")};
  for (int column = 0; column < 4; ++column) {
    auto* title = new QLabel(titles[column], this);
    title->setAlignment(column == 0 ? Qt::AlignLeft : Qt::AlignRight);
    grid->addWidget(title, 0, column);
    grid->setColumnStretch(column, column == 0 ? 0 : 1);
  }
  offset_ = NewRow(*grid, 1, tr("Offset"), "offset");
  position_ = NewRow(*grid, 2, tr("Tip"), "position");
  deviation_ = NewRow(*grid, 3, tr("± 1σ"), "deviation");
  return grid;
}

LiveValues::Row LiveValues::NewRow(QGridLayout& grid, int row, const QString& title,
                                   const char* name) {
  grid.addWidget(new QLabel(title, this), row, 0);
  Row labels{};
  for (int i = 0; i < 3; ++i) {
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
    label->setAlignment(Qt::AlignRight);
    label->setStyleSheet("font-size: 17px; font-weight: bold;");
    grid.addWidget(label, row, i + 1);
    labels[static_cast<std::size_t>(i)] = label;
  }
  return labels;
}

void LiveValues::Refresh() {
  ShowFlags();
  if (model_.Live()) {
    ShowFigures(*model_.Live());
  } else {
    ShowNothing();
  }
}

void LiveValues::ShowFlags() {
  const auto& live = model_.Live();
  SetText(*calibration_, CalibrationText(model_.Calibration()));
  SetTone(*calibration_, ToneOf(model_.Calibration()));
  SetText(*still_, !live ? tr("No samples") : live->still ? tr("Still") : tr("MOVING"));
  SetTone(*still_, !live ? Tone::Bad : live->still ? Tone::Good : Tone::Caution);
  SetText(*magnetic_, !live             ? tr("–")
                      : live->disturbed ? tr("MAGNETOMETERS DISAGREE")
                                        : tr("Magnetometers agree"));
  SetTone(*magnetic_, !live ? Tone::Neutral : live->disturbed ? Tone::Bad : Tone::Good);
}

void LiveValues::ShowFigures(const Reading& reading) {
  const auto show = [](const Row& row, double north, double east, double height) {
    SetText(*row[0], Metres(north));
    SetText(*row[1], Metres(east));
    SetText(*row[2], Metres(height));
  };
  const xyhCoordinate& offset = reading.tip.Offset;
  show(offset_, offset.x, offset.y, offset.h);
  show(deviation_, reading.quality.North, reading.quality.East, reading.quality.Height);
  if (reading.position) {
    show(position_, reading.position->x, reading.position->y, reading.position->h);
  } else {
    for (QLabel* const label : position_) SetText(*label, QStringLiteral("–"));
  }
  SetText(*limit_, Translated(reading.quality.Statement));
}

// An old figure looks like a live one, so there is none.
void LiveValues::ShowNothing() {
  for (const Row& row : {offset_, position_, deviation_}) {
    for (QLabel* const label : row) SetText(*label, QStringLiteral("–"));
  }
  SetText(*limit_, QString());
}

}  // namespace tiltpole::field
