#pragma once

#include <QCoreApplication>
#include <QPushButton>
#include <QWidget>

#include "apps/field/field_model.h"
#include "apps/field/pole_pad.h"

namespace tiltpole::field {

/// What moves the simulated pole; only to be seen while it is the source.
class PolePanel : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(PolePanel)
 public:
  PolePanel(FieldModel& model, QWidget* parent);

  void Refresh();

 private:
  SimulatedSource* Pole() const;
  /// A button that turns the pole as long as it is held.
  QPushButton* NewTurnButton(const QString& name, const QString& text,
                             void (SimulatedSource::*turn)(double), double rate);
  QPushButton* NewSwitch(const QString& name, const QString& text,
                         void (SimulatedSource::*set)(bool));

  FieldModel& model_;
  PolePad* pad_;
};

}  // namespace tiltpole::field
