#include "tiltpole/platform/qt/message_box_qt.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>
#include <string>

#include "tiltpole/platform/message_box.h"

namespace tiltpole::detail {
namespace {

void ShowModal(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
  QMessageBox box(icon == MessageIcon::Stop ? QMessageBox::Critical : QMessageBox::Warning,
                  QString::fromStdWString(title), QString::fromStdWString(text), QMessageBox::Ok);
  box.exec();
}

// A calibration in the background waits until the operator has closed the box, as one in the
// foreground does. A host whose user interface thread waits for that calibration meanwhile sets a
// handler of its own.
bool ShowQtBox(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
  auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
  if (application == nullptr) return false;
  if (QThread::currentThread() == application->thread()) {
    ShowModal(text, title, icon);
  } else {
#ifndef __clang_analyzer__  // It takes what Qt keeps until the call has been made for a leak.
    QMetaObject::invokeMethod(
        application, [&] { ShowModal(text, title, icon); }, Qt::BlockingQueuedConnection);
#endif
  }
  return true;
}

}  // namespace

void ShowMessagesInQtBoxes() { SetFallbackMessageBox(ShowQtBox); }

}  // namespace tiltpole::detail
