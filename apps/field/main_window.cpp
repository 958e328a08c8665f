#include "apps/field/main_window.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/field/theme.h"
#include "apps/session/input_error.h"

namespace tiltpole::field {
namespace {

constexpr int kTickMilliseconds = 33;
constexpr int kGap = 4;
constexpr QSize kSmallestWindow(440, 720);
// After the program was held up, a source goes on from where it was.
constexpr double kLongestTick = 0.25;

}  // namespace

MainWindow::MainWindow(double pole_length)
    : model_(pole_length),
      notices_(new NoticeBar(this)),
      source_(new SourceBar(model_, *notices_, this)),
      pages_(new QStackedWidget(this)),
      calibrate_(new CalibratePage(model_, *notices_, this)),
      measure_(new MeasurePage(model_, *notices_, this)),
      pole_(new PolePanel(model_, this)) {
  setWindowTitle(tr("tiltpole field"));
  pages_->addWidget(calibrate_);
  pages_->addWidget(measure_);
  setMinimumSize(kSmallestWindow);
  auto* layout = new QVBoxLayout(this);
  // The pages change their layout with the width, so what they need now is no limit.
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  layout->setContentsMargins(kGap, kGap, kGap, kGap);
  layout->setSpacing(kGap);
  layout->addWidget(source_);
  layout->addLayout(NewTabs());
  layout->addWidget(pages_, 1);
  layout->addWidget(pole_);
  connect(&tick_, &QTimer::timeout, this, [this] { Tick(); });
  since_tick_.start();
  tick_.start(kTickMilliseconds);
}

QLayout* MainWindow::NewTabs() {
  auto* tabs = new QHBoxLayout;
  tabs->setSpacing(4);
  auto* group = new QButtonGroup(this);
  for (QPushButton* const tab : {NewTab("tab_calibrate", tr("Calibrate"), calibrate_, Qt::Key_F1),
                                 NewTab("tab_measure", tr("Measure"), measure_, Qt::Key_F2)}) {
    group->addButton(tab);
    tabs->addWidget(tab);
  }
  group->buttons().constFirst()->setChecked(true);
  return tabs;
}

QPushButton* MainWindow::NewTab(const QString& name, const QString& text, QWidget* page,
                                Qt::Key key) {
  QPushButton* const tab = NewButton(name, text, this);
  tab->setCheckable(true);
  tab->setShortcut(key);
  connect(tab, &QPushButton::clicked, this, [this, page] { pages_->setCurrentWidget(page); });
  return tab;
}

// Over the page's upper part: what is touched most lies below.
void MainWindow::resizeEvent(QResizeEvent*) {
  constexpr int kBelowSource = kTouchSize + 2 * kGap;
  notices_->PlaceAt({kGap, kBelowSource}, width() - 2 * kGap);
}

void MainWindow::OpenPoints(const QString& path) {
  const auto failed = [this](const char* why) {
    notices_->Say(tr("Points cannot be stored. %1").arg(QString::fromUtf8(why)), Tone::Bad);
  };
  try {
    model_.OpenPoints(path.toStdString());
    const int unreadable = model_.Points()->UnreadableRows();
    if (unreadable > 0) {
      notices_->Say(
          tr("Some rows of the points file cannot be read (%1), for instance one that was cut "
             "off. They are left as they are; all other points are here.")
              .arg(unreadable),
          Tone::Caution);
    }
  } catch (const session::InputError& error) {
    failed(error.what());
  } catch (const session::OutputError& error) {
    failed(error.what());
  }
}

void MainWindow::Tick() {
  const double elapsed = static_cast<double>(since_tick_.restart()) / 1000.0;
  model_.Advance(std::min(elapsed, kLongestTick));
  source_->Refresh();
  pole_->Refresh();
  if (pages_->currentWidget() == calibrate_) calibrate_->Refresh();
  if (pages_->currentWidget() == measure_) measure_->Refresh();
}

}  // namespace tiltpole::field
