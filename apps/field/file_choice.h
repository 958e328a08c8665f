#pragma once

#include <QString>
#include <QWidget>
#include <optional>

namespace tiltpole::field {

enum class FilePurpose { Open, Save };

/// Asks for a file, in a dialog as large as the window; empty when the operator does not want one.
/// @param suffix  appended to a new name that has none, without the dot
std::optional<QString> ChooseFile(QWidget* parent, FilePurpose purpose, const QString& title,
                                  const QString& suffix);

}  // namespace tiltpole::field
