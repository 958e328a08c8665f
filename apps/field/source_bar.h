#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <cstdint>

#include "apps/field/field_model.h"
#include "apps/field/notice_bar.h"

namespace tiltpole::field {

/// Where samples come from, and how that goes: play, pause, speed, another source.
class SourceBar : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(SourceBar)
 public:
  SourceBar(FieldModel& model, NoticeBar& notices, QWidget* parent);

  void Refresh();
  /// Opens a session file, or says why it cannot be opened.
  void OpenSession(const QString& path);
  void OpenSimulatedPole();
  void SetSpeed(double speed);
  void SetSeed(std::uint64_t seed) { seed_ = seed; }

 private:
  void ConnectButtons();
  void Use(std::unique_ptr<SampleSource> source);
  void NextSpeed();
  QString StateText() const;
  void SayWhatHappened();

  FieldModel& model_;
  NoticeBar& notices_;
  QLabel* state_;
  QPushButton* play_;
  QPushButton* speed_button_;
  QPushButton* choose_;
  double speed_ = 1.0;
  std::uint64_t seed_ = 1;
  SourceState last_state_ = SourceState::Paused;
  bool was_silent_ = false;
};

}  // namespace tiltpole::field
