#pragma once

#include <QBoxLayout>
#include <QCoreApplication>
#include <QWidget>

#include "apps/field/field_model.h"
#include "apps/field/notice_bar.h"
#include "apps/field/turn_view.h"
#include "apps/field/verdict_view.h"

namespace tiltpole::field {

/// Both turns, Adjust, the verdict, and the parameter file.
class CalibratePage : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(CalibratePage)
 public:
  CalibratePage(FieldModel& model, NoticeBar& notices, QWidget* parent);

  void Refresh();
  /// Loads a parameter file and says what is odd about it.
  void Load(const QString& path);
  void Save(const QString& path);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLayout* NewButtons();
  void ConnectButtons();

  FieldModel& model_;
  NoticeBar& notices_;
  TurnView* horizontal_;
  TurnView* vertical_;
  VerdictView* verdict_;
  QPushButton* adjust_;
  QPushButton* check_;
  QPushButton* clear_;
  QPushButton* load_;
  QPushButton* save_;
  QBoxLayout* halves_;
};

}  // namespace tiltpole::field
