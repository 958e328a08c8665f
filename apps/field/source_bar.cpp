#include "apps/field/source_bar.h"

#include <QHBoxLayout>
#include <QMenu>
#include <array>

#include "apps/field/file_choice.h"
#include "apps/field/replay_source.h"
#include "apps/field/simulated_source.h"
#include "apps/field/theme.h"
#include "apps/session/input_error.h"

namespace tiltpole::field {
namespace {

constexpr std::array<double, 5> kSpeeds = {1.0, 2.0, 5.0, 10.0, 20.0};

QPushButton* NewNarrowButton(const QString& name, const QString& text, QWidget* parent) {
  QPushButton* const button = NewButton(name, text, parent);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

}  // namespace

SourceBar::SourceBar(FieldModel& model, NoticeBar& notices, QWidget* parent)
    : QWidget(parent),
      model_(model),
      notices_(notices),
      state_(new QLabel(this)),
      play_(NewNarrowButton("play", QString(), this)),
      speed_button_(NewNarrowButton("speed", QString(), this)),
      choose_(NewNarrowButton("source", tr("Source"), this)) {
  state_->setObjectName("source_state");
  state_->setWordWrap(true);
  state_->setMinimumHeight(kTouchSize);
  state_->setStyleSheet("font-size: 14px;");
  play_->setShortcut(Qt::Key_F9);
  play_->setMinimumWidth(76);
  speed_button_->setMinimumWidth(64);
  auto* menu = new QMenu(choose_);
  menu->setObjectName("source_menu");
  menu->addAction(tr("Open session …"), this, [this] {
    const auto path = ChooseFile(this, FilePurpose::Open, tr("Open session"), "csv");
    if (path) OpenSession(*path);
  });
  menu->addAction(tr("Live simulated pole"), this, [this] { OpenSimulatedPole(); });
  choose_->setMenu(menu);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(state_, 1);
  layout->addWidget(play_);
  layout->addWidget(speed_button_);
  layout->addWidget(choose_);
  ConnectButtons();
}

void SourceBar::ConnectButtons() {
  connect(play_, &QPushButton::clicked, this, [this] {
    SampleSource* const source = model_.Source();
    if (source == nullptr) return;
    if (source->State() == SourceState::Running) {
      source->Pause();
    } else {
      source->Play();
    }
  });
  connect(speed_button_, &QPushButton::clicked, this, [this] { NextSpeed(); });
}

void SourceBar::OpenSession(const QString& path) {
  try {
    Use(std::make_unique<ReplaySource>(path.toStdString()));
  } catch (const session::InputError& error) {
    notices_.Say(tr("The session cannot be opened. %1").arg(QString::fromUtf8(error.what())),
                 Tone::Bad);
  }
}

void SourceBar::OpenSimulatedPole() {
  Use(std::make_unique<SimulatedSource>(seed_, model_.PoleLength()));
}

void SourceBar::Use(std::unique_ptr<SampleSource> source) {
  source->SetSpeed(speed_);
  last_state_ = source->State();
  model_.SetSource(std::move(source));
}

void SourceBar::SetSpeed(double speed) {
  speed_ = speed;
  if (model_.Source() != nullptr) model_.Source()->SetSpeed(speed);
}

void SourceBar::NextSpeed() {
  for (const double speed : kSpeeds) {
    if (speed > speed_) {
      SetSpeed(speed);
      return;
    }
  }
  SetSpeed(kSpeeds.front());
}

QString SourceBar::StateText() const {
  const SampleSource* const source = model_.Source();
  if (source == nullptr) return tr("No source: choose one.");
  if (model_.IsSilent()) return tr("NO SAMPLES ARRIVE");
  QString name =
      source->Name().empty() ? tr("Simulated pole") : QString::fromStdString(source->Name());
  if (source->Progress()) name += tr(" %1 %").arg(qRound(100.0 * *source->Progress()));
  switch (source->State()) {
    case SourceState::Paused:
      return tr("%1\nPaused: press Play").arg(name);
    case SourceState::Running:
      return tr("%1\nRunning").arg(name);
    case SourceState::Ended:
      return tr("%1\nThe session has ended").arg(name);
    case SourceState::Broken:
      break;
  }
  return tr("%1\nUNREADABLE FROM HERE").arg(name);
}

// Once for each time that the source stops.
void SourceBar::SayWhatHappened() {
  const SampleSource* const source = model_.Source();
  if (source == nullptr) return;
  if (model_.IsSilent() && !was_silent_) {
    notices_.Say(tr("No samples arrive. Check the sensor and its connection; the points are safe."),
                 Tone::Bad);
  }
  was_silent_ = model_.IsSilent();
  if (source->State() == last_state_) return;
  last_state_ = source->State();
  if (last_state_ == SourceState::Broken) {
    notices_.Say(tr("The session cannot be read further; everything before was used. %1")
                     .arg(QString::fromStdString(source->Fault())),
                 Tone::Bad);
  }
}

void SourceBar::Refresh() {
  SayWhatHappened();
  SetText(*state_, StateText());
  SetTone(*state_,
          model_.IsSilent() || last_state_ == SourceState::Broken ? Tone::Bad : Tone::Neutral);
  const SampleSource* const source = model_.Source();
  const bool running = source != nullptr && source->State() == SourceState::Running;
  const bool paused = source != nullptr && source->State() == SourceState::Paused;
  play_->setEnabled(running || paused);
  SetText(*play_, running ? tr("Pause") : tr("Play"));
  SetText(*speed_button_, tr("%1×").arg(speed_));
}

}  // namespace tiltpole::field
