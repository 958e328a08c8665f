#pragma once

#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include "apps/field/field_model.h"
#include "apps/field/notice_bar.h"

namespace tiltpole::field {

/// Takes points: begins an average, shows how it goes, stores.
class PointBar : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(PointBar)
 public:
  PointBar(FieldModel& model, NoticeBar& notices, QWidget* parent);

  void Refresh();
  void SetStillSeconds(double seconds) { still_seconds_ = seconds; }

 private:
  QPushButton* NewMenu();
  void ConnectButtons();
  void NextStillTime();
  void AskPoleLength();
  void ExportTo(bool geo_json);
  void ShowResult(StoringResult result);
  QString Guidance() const;

  FieldModel& model_;
  NoticeBar& notices_;
  double still_seconds_ = 2.0;
  QPushButton* store_;
  QPushButton* store_now_;
  QAction* still_time_;
  QAction* pole_length_;
  QAction* csv_;
  QAction* geo_json_;
  QProgressBar* progress_;
  QLabel* guidance_;
};

}  // namespace tiltpole::field
