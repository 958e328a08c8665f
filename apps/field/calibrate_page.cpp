#include "apps/field/calibrate_page.h"

#include <QGridLayout>
#include <QResizeEvent>

#include "apps/field/file_choice.h"
#include "apps/field/theme.h"
#include "apps/session/input_error.h"

namespace tiltpole::field {

CalibratePage::CalibratePage(FieldModel& model, NoticeBar& notices, QWidget* parent)
    : QWidget(parent),
      model_(model),
      notices_(notices),
      horizontal_(new TurnView(model, SampleSet::Horizontal, this)),
      vertical_(new TurnView(model, SampleSet::Vertical, this)),
      verdict_(new VerdictView(model, this)),
      adjust_(NewButton("adjust", tr("Adjust"), this)),
      check_(NewButton("check", tr("Check"), this)),
      clear_(NewButton("clear_turns", tr("New turns"), this)),
      load_(NewButton("load_parameters", tr("Load"), this)),
      save_(NewButton("save_parameters", tr("Save"), this)) {
  adjust_->setProperty("role", "main");
  adjust_->setToolTip(tr("Fit new parameters to both turns"));
  check_->setToolTip(tr("Hold the parameters in force against both turns"));
  auto* turns = new QHBoxLayout;
  turns->addWidget(horizontal_);
  turns->addWidget(vertical_);
  auto* result = new QVBoxLayout;
  result->addLayout(NewButtons());
  result->addWidget(verdict_, 1);
  halves_ = new QBoxLayout(QBoxLayout::TopToBottom, this);
  halves_->setContentsMargins(0, 0, 0, 0);
  halves_->setSpacing(6);
  halves_->addLayout(turns, 5);
  halves_->addLayout(result, 3);
  ConnectButtons();
}

QLayout* CalibratePage::NewButtons() {
  auto* buttons = new QGridLayout;
  buttons->setSpacing(4);
  buttons->addWidget(adjust_, 0, 0, 1, 2);
  buttons->addWidget(check_, 0, 2, 1, 2);
  buttons->addWidget(clear_, 0, 4, 1, 2);
  buttons->addWidget(load_, 1, 0, 1, 3);
  buttons->addWidget(save_, 1, 3, 1, 3);
  return buttons;
}

void CalibratePage::ConnectButtons() {
  connect(adjust_, &QPushButton::clicked, this, [this] { model_.StartAdjust(); });
  connect(check_, &QPushButton::clicked, this, [this] { model_.StartCheck(); });
  connect(clear_, &QPushButton::clicked, this, [this] { model_.ClearTurns(); });
  connect(load_, &QPushButton::clicked, this, [this] {
    const auto path = ChooseFile(this, FilePurpose::Open, tr("Load parameters"), "txt");
    if (path) Load(*path);
  });
  connect(save_, &QPushButton::clicked, this, [this] {
    const auto path = ChooseFile(this, FilePurpose::Save, tr("Save parameters"), "txt");
    if (path) Save(*path);
  });
}

void CalibratePage::Load(const QString& path) {
  try {
    const LoadedParameters loaded = LoadParameters(path.toStdString());
    model_.ForgetOutcome();
    model_.SetCalibration(loaded.state);
    for (const std::string& warning : loaded.warnings) {
      notices_.Say(tr("Parameter file: %1").arg(QString::fromStdString(warning)), Tone::Caution);
    }
    const bool turns_at_hand = model_.HasTurns();
    if (turns_at_hand) model_.StartCheck();
    if (loaded.state.calibrated && !turns_at_hand) {
      notices_.Say(tr("Parameters loaded. Whether they belong to this pole is not known: record "
                      "both turns and press Check."),
                   Tone::Caution);
    }
  } catch (const session::InputError& error) {
    notices_.Say(tr("Not loaded; the parameters from before stay in force. %1")
                     .arg(QString::fromUtf8(error.what())),
                 Tone::Bad);
  }
}

void CalibratePage::Save(const QString& path) {
  try {
    SaveParameters(path.toStdString(), model_.Calibration().position);
    notices_.Say(tr("Parameters saved to %1").arg(path), Tone::Good);
  } catch (const session::OutputError& error) {
    notices_.Say(tr("Not saved. %1").arg(QString::fromUtf8(error.what())), Tone::Bad);
  }
}

void CalibratePage::Refresh() {
  horizontal_->Refresh();
  vertical_->Refresh();
  verdict_->Refresh();
  const bool idle = !model_.Run().IsRunning();
  adjust_->setEnabled(idle && model_.HasTurns());
  check_->setEnabled(idle && model_.HasTurns());
  clear_->setEnabled(idle && model_.HasTurns());
  load_->setEnabled(idle);
  save_->setEnabled(idle && model_.Calibration().calibrated);
}

void CalibratePage::resizeEvent(QResizeEvent* event) {
  const bool wide = event->size().width() >= kWideWindow;
  halves_->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  halves_->setStretch(1, wide ? 3 : 1);
}

}  // namespace tiltpole::field
