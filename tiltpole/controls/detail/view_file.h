#pragma once

/// @file
/// The small file in which a plot keeps its view from one run of a program to the next.

#include <string>

#include "tiltpole/controls/detail/plot_kind.h"

namespace tiltpole::detail {

/// The folder of a program: its full file name, of which at most 260 characters count, cut before
/// the last separator, or whole without one.
std::wstring FolderOf(const std::wstring& program);

/// The folder of the running program.
std::wstring ProgramFolder();

/// The view file of a plot in a folder, joined with the separator of the system.
std::wstring ViewFilePath(const PlotKind& kind, const std::wstring& folder);

/// The line that a view file holds, with its line end.
std::wstring ViewLine(const PlotKind& kind, const PlotView& view);

/// Changes a view by what the text of a view file says: three numbers after the prefix of the plot,
/// separated by commas. A number that is missing leaves its part of the view; without the prefix
/// nothing changes.
void ApplyViewText(const PlotKind& kind, const std::wstring& text, PlotView& view);

/// @return 1, or 0 when the file could not be opened for writing
int SaveView(const PlotKind& kind, const std::wstring& path, const PlotView& view);

/// @return 1, or 0 when the file could not be opened or read; then the view stays
int LoadView(const PlotKind& kind, const std::wstring& path, PlotView& view);

}  // namespace tiltpole::detail
