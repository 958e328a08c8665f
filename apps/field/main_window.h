#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QWidget>

#include "apps/field/calibrate_page.h"
#include "apps/field/field_model.h"
#include "apps/field/measure_page.h"
#include "apps/field/notice_bar.h"
#include "apps/field/pole_panel.h"
#include "apps/field/source_bar.h"

namespace tiltpole::field {

/// The window: the source on top, two pages, and the simulated pole at the bottom.
class MainWindow : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(MainWindow)
 public:
  explicit MainWindow(double pole_length);

  FieldModel& Model() { return model_; }
  SourceBar& Source() { return *source_; }
  CalibratePage& Calibrate() { return *calibrate_; }
  MeasurePage& Measure() { return *measure_; }
  /// Opens the points file, or says why nothing can be stored.
  void OpenPoints(const QString& path);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLayout* NewTabs();
  QPushButton* NewTab(const QString& name, const QString& text, QWidget* page, Qt::Key key);
  void Tick();

  FieldModel model_;
  NoticeBar* notices_;
  SourceBar* source_;
  QStackedWidget* pages_;
  CalibratePage* calibrate_;
  MeasurePage* measure_;
  PolePanel* pole_;
  QTimer tick_;
  QElapsedTimer since_tick_;
};

}  // namespace tiltpole::field
