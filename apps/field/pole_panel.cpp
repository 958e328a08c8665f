#include "apps/field/pole_panel.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "apps/field/theme.h"

namespace tiltpole::field {
namespace {

// A whole turn in ten seconds: as fast as is good for a calibration.
constexpr double kTurnRate = 36.0;
constexpr int kPadSize = 100;

}  // namespace

PolePanel::PolePanel(FieldModel& model, QWidget* parent)
    : QWidget(parent), model_(model), pad_(new PolePad(this)) {
  pad_->setFixedSize(kPadSize, kPadSize);
  auto* plumb = NewButton("plumb", tr("Plumb"), this);
  auto* walk = NewButton("walk", tr("Next point"), this);
  connect(plumb, &QPushButton::clicked, this, [this] { Pole()->StandPlumb(); });
  connect(walk, &QPushButton::clicked, this, [this] { Pole()->WalkOn(); });
  auto* buttons = new QGridLayout;
  buttons->setSpacing(4);
  buttons->addWidget(
      NewTurnButton("turn_left", tr("↺ Turn"), &SimulatedSource::SetTurning, -kTurnRate), 0, 0);
  buttons->addWidget(
      NewTurnButton("turn_right", tr("↻ Turn"), &SimulatedSource::SetTurning, kTurnRate), 0, 1);
  buttons->addWidget(
      NewTurnButton("turn_over", tr("Over"), &SimulatedSource::SetTurningOver, kTurnRate), 0, 2);
  buttons->addWidget(plumb, 0, 3);
  buttons->addWidget(walk, 1, 0, 1, 2);
  buttons->addWidget(NewSwitch("iron", tr("Iron"), &SimulatedSource::SetIron), 1, 2);
  buttons->addWidget(NewSwitch("unplug", tr("Unplug"), &SimulatedSource::SetUnplugged), 1, 3);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(6);
  layout->addWidget(pad_);
  layout->addLayout(buttons, 1);
}

SimulatedSource* PolePanel::Pole() const { return dynamic_cast<SimulatedSource*>(model_.Source()); }

QPushButton* PolePanel::NewTurnButton(const QString& name, const QString& text,
                                      void (SimulatedSource::*turn)(double), double rate) {
  QPushButton* const button = NewButton(name, text, this);
  const auto set = [this, turn](double value) {
    if (Pole() != nullptr) (Pole()->*turn)(value);
  };
  connect(button, &QPushButton::pressed, this, [set, rate] { set(rate); });
  connect(button, &QPushButton::released, this, [set] { set(0.0); });
  return button;
}

QPushButton* PolePanel::NewSwitch(const QString& name, const QString& text,
                                  void (SimulatedSource::*set)(bool)) {
  QPushButton* const button = NewButton(name, text, this);
  button->setCheckable(true);
  connect(button, &QPushButton::toggled, this, [this, set](bool on) {
    if (Pole() != nullptr) (Pole()->*set)(on);
  });
  return button;
}

void PolePanel::Refresh() {
  setVisible(Pole() != nullptr);
  pad_->SetSource(Pole());
}

}  // namespace tiltpole::field
