#include "apps/field/file_choice.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>

namespace tiltpole::field {

std::optional<QString> ChooseFile(QWidget* parent, FilePurpose purpose, const QString& title,
                                  const QString& suffix) {
  QFileDialog dialog(parent->window(), title);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(purpose == FilePurpose::Open ? QFileDialog::AcceptOpen
                                                    : QFileDialog::AcceptSave);
  dialog.setFileMode(purpose == FilePurpose::Open ? QFileDialog::ExistingFile
                                                  : QFileDialog::AnyFile);
  dialog.setDefaultSuffix(suffix);
  dialog.setViewMode(QFileDialog::List);
  // The list of places takes half of a small screen.
  if (auto* places = dialog.findChild<QListView*>("sidebar")) places->hide();
  // Its list of proposals would lie over the buttons.
  if (auto* name = dialog.findChild<QLineEdit*>("fileNameEdit")) name->setCompleter(nullptr);
  static QString last_folder;
  if (!last_folder.isEmpty()) dialog.setDirectory(last_folder);
  dialog.resize(parent->window()->size());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_folder = QFileInfo(dialog.selectedFiles().constFirst()).absolutePath();
  return dialog.selectedFiles().constFirst();
}

}  // namespace tiltpole::field
