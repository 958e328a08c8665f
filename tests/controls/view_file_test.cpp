#include "tiltpole/controls/detail/view_file.h"

#include <clocale>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "controls/recorded.h"
#include "controls/view_files.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"
#include "tiltpole/platform/program_path.h"

using tiltpole::CGraphMagnetic_XY;
using tiltpole::CGraphMagnetic_XZ;
using tiltpole::detail::ApplyViewText;
using tiltpole::detail::FolderOf;
using tiltpole::detail::kPlotXY;
using tiltpole::detail::kPlotXZ;
using tiltpole::detail::LoadView;
using tiltpole::detail::PlotView;
using tiltpole::detail::SaveView;
using tiltpole::detail::ViewLine;
using namespace tiltpole_test;

namespace {

/// What the text of a view file makes of the view (1, 2, 3.0).
PlotView Applied(const std::wstring& text) {
  PlotView view = {1, 2, 3.0};
  ApplyViewText(kPlotXY, text, view);
  return view;
}

void ExpectView(const PlotView& view, int left_x, int bottom_v, double scale) {
  EXPECT_EQ(view.left_x, left_x);
  EXPECT_EQ(view.bottom_v, bottom_v);
  EXPECT_EQ(view.scale, scale);
}

class ViewFile : public RecordedTest {
 protected:
  ViewFiles files;
};

}  // namespace

TEST(ViewText, TheLineOfTheFirstViews) {
  EXPECT_EQ(ViewLine(kPlotXY, kPlotXY.first_view), L"GRAPHMAGNETIC_XY:-500, -500, 2.500000,\r\n");
  EXPECT_EQ(ViewLine(kPlotXZ, kPlotXZ.first_view), L"GRAPHMAGNETIC_XZ:0, -500, 3.000000,\r\n");
}

TEST(ViewText, TheScaleHasSixDecimalsHoweverLargeItIs) {
  EXPECT_EQ(ViewLine(kPlotXY, {0, 0, 1e22}),
            L"GRAPHMAGNETIC_XY:0, 0, 10000000000000000000000.000000,\r\n");
  EXPECT_EQ(ViewLine(kPlotXY, {0, 0, 1e-300}), L"GRAPHMAGNETIC_XY:0, 0, 0.000000,\r\n");
}

TEST(ViewText, GivesAllThreeNumbers) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:-74, -37, 2.250000,\r\n"), -74, -37, 2.25);
}

TEST(ViewText, OneNumberWithoutCommasSetsOnlyTheLeftEdge) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:12"), 12, 2, 3.0);
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:12\r\n"), 12, 2, 3.0);
}

TEST(ViewText, TwoNumbersKeepTheScale) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:12, 13"), 12, 13, 3.0);
}

TEST(ViewText, NothingAfterTheLastCommaIsNoNumber) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:"), 1, 2, 3.0);
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:12,"), 12, 2, 3.0);
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:12, 13,"), 12, 13, 3.0);
}

TEST(ViewText, NothingBetweenTwoCommasIsZero) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:,,5"), 0, 0, 5.0);
}

TEST(ViewText, WhatIsNoNumberIsZero) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:left, bottom, wide,"), 0, 0, 0.0);
}

TEST(ViewText, ANumberEndsWhereOtherTextBegins) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY: 12abc, 3.9, 1.5e2x,"), 12, 3, 150.0);
}

TEST(ViewText, FurtherFieldsAreIgnored) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:4, 5, 6, 7, 8\r\nGRAPHMAGNETIC_XY:9"), 4, 5, 6.0);
}

TEST(ViewText, WithoutThePrefixNothingChanges) {
  ExpectView(Applied(L""), 1, 2, 3.0);
  ExpectView(Applied(L"4, 5, 6"), 1, 2, 3.0);
  ExpectView(Applied(L"GRAPHMAGNETIC_XZ:4, 5, 6"), 1, 2, 3.0);
  ExpectView(Applied(L"graphmagnetic_xy:4, 5, 6"), 1, 2, 3.0);
}

TEST(ViewText, ThePrefixMayStandAnywhere) {
  ExpectView(Applied(L"; saved\r\nGRAPHMAGNETIC_XY:4, 5, 6"), 4, 5, 6.0);
}

TEST(ViewText, NumbersBeyondTheIntsBecomeTheirEnds) {
  ExpectView(Applied(L"GRAPHMAGNETIC_XY:99999999999, -99999999999, 1e999"),
             std::numeric_limits<int>::max(), std::numeric_limits<int>::min(),
             std::numeric_limits<double>::infinity());
}

RC_GTEST_PROP(ViewText, AViewComesBackFromItsLine, ()) {
  const PlotView view = {*rc::gen::arbitrary<int>(), *rc::gen::arbitrary<int>(),
                         *rc::gen::inRange(-1000000, 1000000) / 64.0};
  PlotView back;
  ApplyViewText(kPlotXZ, ViewLine(kPlotXZ, view), back);
  RC_ASSERT(back.left_x == view.left_x);
  RC_ASSERT(back.bottom_v == view.bottom_v);
  RC_ASSERT(back.scale == view.scale);
}

TEST(ProgramFolder, IsTheNameOfTheProgramUpToItsLastSeparator) {
  const std::wstring separator(1, std::filesystem::path::preferred_separator);
  EXPECT_EQ(FolderOf(L"field" + separator + L"bin" + separator + L"host"),
            L"field" + separator + L"bin");
  EXPECT_EQ(FolderOf(separator + L"host"), L"");
}

TEST(ProgramFolder, IsTheWholeNameWhereThatHasNoSeparator) {
  EXPECT_EQ(FolderOf(L"host"), L"host");
  EXPECT_EQ(FolderOf(L""), L"");
}

TEST(ProgramFolder, OfALongNameComesFromTheFirst260Characters) {
  const std::wstring separator(1, std::filesystem::path::preferred_separator);
  const std::wstring first = separator + std::wstring(199, L'a');
  EXPECT_EQ(FolderOf(first + separator + std::wstring(59, L'b') + separator + L"host"), first);
  EXPECT_EQ(FolderOf(first + separator + std::wstring(58, L'b') + separator + L"host"),
            first + separator + std::wstring(58, L'b'));
}

TEST_F(ViewFile, StandsBesideTheProgram) {
  const std::filesystem::path program = tiltpole::detail::ProgramPath();
  EXPECT_EQ(files.xy, program.parent_path() / "GraphMagnetic_XY.cfg");
  EXPECT_EQ(files.xz, program.parent_path() / "GraphMagnetic_XZ.cfg");
}

TEST_F(ViewFile, HoldsTheViewOfANewPlotByteByByte) {
  CGraphMagnetic_XY xy;
  EXPECT_EQ(xy.ConfigSave(), 1);
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-500, -500, 2.500000,\r\n");
  CGraphMagnetic_XZ xz;
  EXPECT_EQ(xz.ConfigSave(), 1);
  EXPECT_EQ(files.Read(files.xz), "GRAPHMAGNETIC_XZ:0, -500, 3.000000,\r\n");
}

TEST_F(ViewFile, IsNotWrittenByConstructionOrDrawing) {
  {
    CGraphMagnetic_XY plot;
    plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
    plot.AddTrackPoint(-250, -375, 0);
    plot.Clear();
    plot.InvalidateCtrl();
  }
  EXPECT_FALSE(files.Exists(files.xy));
}

TEST_F(ViewFile, ReplacesALongerOneWhole) {
  files.Write(files.xy, std::string(5000, 'x'));
  CGraphMagnetic_XY plot;
  EXPECT_EQ(plot.ConfigSave(), 1);
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-500, -500, 2.500000,\r\n");
}

TEST_F(ViewFile, GivesTheNextPlotTheViewOfTheLastOne) {
  files.Write(files.xy, "GRAPHMAGNETIC_XY:10, 20, 0.500000,\r\n");
  CGraphMagnetic_XY plot;
  plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
  int x = 0;
  int y = 0;
  plot.WorldToClient(15, 30, x, y);
  EXPECT_EQ(x, 10);
  EXPECT_EQ(y, 80);
}

TEST_F(ViewFile, ThatIsMissingLeavesTheFirstView) {
  CGraphMagnetic_XZ plot;
  EXPECT_EQ(plot.ConfigRead(), 0);
  plot.ConfigSave();
  EXPECT_EQ(files.Read(files.xz), "GRAPHMAGNETIC_XZ:0, -500, 3.000000,\r\n");
}

TEST_F(ViewFile, WithoutThePrefixIsReadButChangesNothing) {
  files.Write(files.xy, "nothing of ours");
  CGraphMagnetic_XY plot;
  EXPECT_EQ(plot.ConfigRead(), 1);
  plot.ConfigSave();
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-500, -500, 2.500000,\r\n");
}

TEST_F(ViewFile, ThatIsEmptyIsReadButChangesNothing) {
  files.Write(files.xy, "");
  CGraphMagnetic_XY plot;
  EXPECT_EQ(plot.ConfigRead(), 1);
}

TEST_F(ViewFile, CountsWithItsFirst999Bytes) {
  PlotView view = {1, 2, 3.0};
  files.Write(files.xy, std::string(999 - 19, ' ') + "GRAPHMAGNETIC_XY:4567, 8, 9,\r\n");
  EXPECT_EQ(LoadView(kPlotXY, files.xy.wstring(), view), 1);
  ExpectView(view, 45, 2, 3.0);
  files.Write(files.xy, std::string(999, ' ') + "GRAPHMAGNETIC_XY:6, 7, 8,\r\n");
  EXPECT_EQ(LoadView(kPlotXY, files.xy.wstring(), view), 1);
  ExpectView(view, 45, 2, 3.0);
}

TEST_F(ViewFile, EndsAtAZeroByte) {
  PlotView view = {1, 2, 3.0};
  files.Write(files.xy, std::string("GRAPHMAGNETIC_XY:45\0"
                                    "67, 8, 9",
                                    28));
  EXPECT_EQ(LoadView(kPlotXY, files.xy.wstring(), view), 1);
  ExpectView(view, 45, 2, 3.0);
}

TEST_F(ViewFile, MayHoldAnyBytes) {
  PlotView view = {1, 2, 3.0};
  files.Write(files.xy, "\xff\xfe\x80\xc3GRAPHMAGNETIC_XY:4,\xff 5, 6,");
  EXPECT_EQ(LoadView(kPlotXY, files.xy.wstring(), view), 1);
  ExpectView(view, 4, 0, 6.0);
}

TEST_F(ViewFile, ThatCannotBeWrittenIsOnlyAFailedSave) {
  std::filesystem::create_directory(files.xy);
  CGraphMagnetic_XY plot;
  plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
  EXPECT_EQ(plot.ConfigSave(), 0);
  EXPECT_EQ(plot.ConfigRead(), 0);
  plot.AddTrackPoint(0, 0, 0);
  plot.AddTrackPoint(300, 150, 0);
  plot.ZoomAll();
  int x = 0;
  int y = 0;
  plot.WorldToClient(150, 75, x, y);
  EXPECT_EQ(x, 100);
  EXPECT_EQ(y, 50);
  EXPECT_EQ(SaveView(kPlotXY, L"", {}), 0);
}

TEST_F(ViewFile, IsTheSameInALocaleWithDecimalCommas) {
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr &&
      std::setlocale(LC_ALL, "German") == nullptr) {
    GTEST_SKIP() << "this system has no locale with decimal commas";
  }
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  CGraphMagnetic_XY plot;
  plot.ConfigSave();
  PlotView view = {};
  LoadView(kPlotXY, files.xy.wstring(), view);
  EXPECT_STREQ(std::setlocale(LC_ALL, "C"), "C");
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-500, -500, 2.500000,\r\n");
  EXPECT_EQ(view.scale, 2.5);
}
