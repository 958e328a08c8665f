#include "apps/field/point_bar.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QMenu>
#include <QVBoxLayout>
#include <array>

#include "apps/field/exports.h"
#include "apps/field/file_choice.h"
#include "apps/field/texts.h"
#include "apps/field/theme.h"
#include "apps/session/input_error.h"

namespace tiltpole::field {
namespace {

constexpr int kStoreHeight = 52;
constexpr int kGuidanceHeight = 38;
constexpr int kProgressWidth = 140;
constexpr std::array<double, 4> kStillTimes = {1.0, 2.0, 5.0, 10.0};

}  // namespace

PointBar::PointBar(FieldModel& model, NoticeBar& notices, QWidget* parent)
    : QWidget(parent),
      model_(model),
      notices_(notices),
      store_(NewButton("store", tr("Store point"), this)),
      store_now_(NewButton("store_now", tr("Store now"), this)),
      still_time_(new QAction(this)),
      pole_length_(new QAction(this)),
      csv_(new QAction(tr("Export CSV …"), this)),
      geo_json_(new QAction(tr("Export GeoJSON …"), this)),
      progress_(new QProgressBar(this)),
      guidance_(new QLabel(this)) {
  store_->setProperty("role", "main");
  store_->setShortcut(Qt::Key_F5);
  store_now_->setShortcut(Qt::Key_F6);
  store_->setMinimumHeight(kStoreHeight);
  store_now_->setMinimumHeight(kStoreHeight);
  guidance_->setObjectName("guidance");
  guidance_->setWordWrap(true);
  progress_->setRange(0, 100);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(4);
  guidance_->setFixedHeight(kGuidanceHeight);
  progress_->setFixedWidth(kProgressWidth);
  auto* state = new QHBoxLayout;
  state->addWidget(guidance_, 1);
  state->addWidget(progress_);
  grid->addLayout(state, 0, 0, 1, 5);
  grid->addWidget(store_, 1, 0, 1, 2);
  grid->addWidget(store_now_, 1, 2, 1, 2);
  grid->addWidget(NewMenu(), 1, 4, 1, 1);
  for (int column = 0; column < 5; ++column) grid->setColumnStretch(column, 1);
  ConnectButtons();
}

QPushButton* PointBar::NewMenu() {
  auto* more = NewButton("more", tr("More"), this);
  more->setMinimumHeight(kStoreHeight);
  auto* menu = new QMenu(more);
  menu->addActions({still_time_, pole_length_, csv_, geo_json_});
  more->setMenu(menu);
  return more;
}

void PointBar::ConnectButtons() {
  connect(store_, &QPushButton::clicked, this, [this] {
    if (model_.Average().IsActive()) {
      model_.CancelPoint();
    } else {
      model_.StartPoint(still_seconds_);
    }
  });
  connect(store_now_, &QPushButton::clicked, this, [this] { model_.StorePointNow(); });
  connect(still_time_, &QAction::triggered, this, [this] { NextStillTime(); });
  connect(pole_length_, &QAction::triggered, this, [this] { AskPoleLength(); });
  connect(csv_, &QAction::triggered, this, [this] { ExportTo(false); });
  connect(geo_json_, &QAction::triggered, this, [this] { ExportTo(true); });
}

void PointBar::NextStillTime() {
  for (const double seconds : kStillTimes) {
    if (seconds > still_seconds_) {
      still_seconds_ = seconds;
      return;
    }
  }
  still_seconds_ = kStillTimes.front();
}

void PointBar::AskPoleLength() {
  bool accepted = false;
  const double length =
      QInputDialog::getDouble(window(), tr("Pole length"), tr("From antenna to tip, metres:"),
                              model_.PoleLength(), 0.1, 20.0, 3, &accepted);
  if (accepted) model_.SetPoleLength(length);
}

void PointBar::ExportTo(bool geo_json) {
  const auto path =
      ChooseFile(this, FilePurpose::Save, geo_json ? tr("Export GeoJSON") : tr("Export CSV"),
                 geo_json ? "geojson" : "csv");
  if (!path || model_.Points() == nullptr) return;
  if (model_.Points()->IsAt(path->toStdString())) {
    notices_.Say(tr("This is the points file itself. Choose another name."), Tone::Bad);
    return;
  }
  try {
    const auto& points = model_.Points()->Points();
    Export(points, geo_json ? ExportFormat::GeoJson : ExportFormat::Csv, path->toStdString());
    notices_.Say(tr("Points exported to %2: %1").arg(points.size()).arg(*path), Tone::Good);
  } catch (const session::OutputError& error) {
    notices_.Say(tr("Not exported. %1").arg(QString::fromUtf8(error.what())), Tone::Bad);
  }
}

void PointBar::Refresh() {
  const bool active = model_.Average().IsActive();
  SetText(*store_, active ? tr("Cancel") : tr("Store point"));
  still_time_->setText(tr("Average over %1 s").arg(still_seconds_));
  pole_length_->setText(tr("Pole length %1 m …").arg(Metres(model_.PoleLength())));
  const bool can_store = model_.Points() != nullptr && model_.Source() != nullptr;
  store_->setEnabled(can_store);
  store_now_->setEnabled(can_store && (model_.Live() || active));
  const bool any = model_.Points() != nullptr && !model_.Points()->Points().empty();
  csv_->setEnabled(any);
  geo_json_->setEnabled(any);
  progress_->setValue(static_cast<int>(100.0 * model_.Average().Progress()));
  progress_->setVisible(active);
  if (active) SetText(*guidance_, Guidance());
  ShowResult(model_.TakeStoringResult());
}

QString PointBar::Guidance() const {
  if (!model_.Live()) return tr("Waiting for samples …");
  if (!model_.Live()->still) return tr("Hold the pole still.");
  if (model_.Average().Restarts() > 0) return tr("The pole moved: averaging begins again.");
  return tr("Averaging: hold still.");
}

void PointBar::ShowResult(StoringResult result) {
  switch (result) {
    case StoringResult::None:
      return;
    case StoringResult::Stored: {
      const StoredPoint& point = model_.Points()->Points().back();
      SetText(*guidance_, tr("Point %1 stored (samples: %2): %3")
                              .arg(point.number)
                              .arg(point.samples)
                              .arg(FlagWords(point.flags)));
      return;
    }
    case StoringResult::NotTold:
      SetText(*guidance_, tr("Not stored."));
      notices_.Say(tr("Not stored: there is no reading whose tip can be told."), Tone::Bad);
      return;
    case StoringResult::NotWritten:
      SetText(*guidance_, tr("Not stored."));
      notices_.Say(tr("Not stored: %1").arg(QString::fromStdString(model_.StoringFault())),
                   Tone::Bad);
      return;
  }
}

}  // namespace tiltpole::field
