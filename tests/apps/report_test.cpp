#include <algorithm>
#include <clocale>
#include <cmath>
#include <locale>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <rapidcheck/gtest.h>

#include "apps/session/number_text.h"
#include "apps/tiltpole/report/chart.h"
#include "apps/tiltpole/report/markup.h"
#include "apps/tiltpole/report/page.h"
#include "apps/tiltpole/report/turn_trace.h"
#include "program.h"
#include "sessions.h"
#include "support/temporary_folder.h"

namespace {

using namespace tiltpole::cli;
using tiltpole::PoseSensorData;
using tiltpole::session::SampleSet;
using tiltpole_test::kSessionHeader;
using tiltpole_test::Only;
using tiltpole_test::ProgramRun;
using tiltpole_test::RunProgram;
using tiltpole_test::Simulated;
using tiltpole_test::TemporaryFolder;

struct Reported {
  ProgramRun run;
  std::string page;
};

Reported ReportOn(const std::string& session, const std::vector<std::string>& further = {}) {
  const TemporaryFolder folder;
  std::vector<std::string> arguments = {
      "calibrate", "-", "-o", folder.File("pole.txt"), "--report", folder.File("report.html")};
  arguments.insert(arguments.end(), further.begin(), further.end());
  Reported reported{RunProgram(arguments, session), {}};
  reported.page = folder.Read("report.html");
  return reported;
}

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

int Count(const std::string& text, const std::string& part) {
  int count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// How many readings each picture of a kind shows.
std::vector<int> DotsPerPicture(const std::string& page, const std::string& kind) {
  std::vector<int> counts;
  const std::string begin = "<svg class=\"" + kind + "\"";
  for (auto at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
    counts.push_back(Count(page.substr(at, page.find("</svg>", at) - at), "h0"));
  }
  return counts;
}

TEST(Report, SaysTheVerdictOfACleanSession) {
  const auto [run, page] = ReportOn(Simulated());
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Holds(page, "Verdict: good"));
  EXPECT_TRUE(Holds(page, "Session: standard input"));
  EXPECT_TRUE(Holds(page, "Horizontal turn: 360 samples, 08:00:00 to 08:00:35."));
}

TEST(Report, GivesTheFiguresOfTheJson) {
  const std::string session = Simulated({"--seed", "11"});
  const auto [run, page] = ReportOn(session, {"--json"});
  const auto json = nlohmann::json::parse(run.out);
  const auto cell = [](double value, int decimals) {
    return "<td>" + tiltpole::session::FixedText(value, decimals) + "</td>";
  };
  const auto& a = json["quality"]["magnetometer_A"];
  EXPECT_TRUE(
      Holds(page, cell(a["expected_heading_error_degrees"]["root_mean_square"].get<double>(), 2)));
  EXPECT_TRUE(Holds(page, cell(a["horizontal_before"]["radius_mean"].get<double>(), 1)));
  EXPECT_TRUE(Holds(page, cell(a["vertical_after"]["radius_scatter_largest"].get<double>(), 1)));
  EXPECT_TRUE(Holds(page, cell(a["dip"].get<double>(), 2)));
  EXPECT_TRUE(Holds(page, cell(json["parameters"]["B"]["e"].get<double>(), 10)));
  EXPECT_TRUE(Holds(page, cell(json["parameters"]["translation"]["dY"].get<double>(), 4)));
}

TEST(Report, ShowsEveryReadingBeforeAndAfter) {
  const auto [run, page] = ReportOn(Simulated({"--samples", "90"}));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(DotsPerPicture(page, "turn"), std::vector<int>(8, 90));
  EXPECT_EQ(DotsPerPicture(page, "residuals"), std::vector<int>(4, 90));
  EXPECT_EQ(DotsPerPicture(page, "coverage"), std::vector<int>(2, 90));
  EXPECT_EQ(Count(page, "<svg class=\"headings\""), 1);
}

TEST(Report, StaysSmallWithThousandsOfReadings) {
  const auto [run, page] = ReportOn(Simulated({"--samples", "6000"}));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(DotsPerPicture(page, "turn"), std::vector<int>(8, 2000));
  EXPECT_TRUE(Holds(page, "6000 samples, of which 2000 are shown"));
  EXPECT_LT(page.size(), 600'000U);
}

TEST(Report, NamesMissingDirectionsAndShadesThem) {
  const auto [run, page] =
      ReportOn(Only(Simulated({"--ideal"}), {SampleSet::Horizontal, SampleSet::Vertical}, 271));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Holds(page, "Verdict: poor"));
  EXPECT_TRUE(Holds(page, "Missing: 270° to 0°."));
  EXPECT_TRUE(Holds(page, "Turn the pole through the directions 270 to 360 degrees as well.") ||
              Holds(page, "Turn the pole through the directions 270 to 0 degrees as well."));
  EXPECT_TRUE(Holds(page, "<rect class=\"missing\""));
  EXPECT_TRUE(Holds(page, "<path class=\"gap-mark\""));
}

TEST(Report, ShadesNothingWhereNothingIsMissing) {
  const auto [run, page] = ReportOn(Simulated());
  EXPECT_FALSE(Holds(page, "class=\"missing\""));
  EXPECT_FALSE(Holds(page, "class=\"gap-mark\""));
  EXPECT_EQ(Count(page, "No direction is missing."), 2);
}

TEST(Report, NeedsNothingFromElsewhere) {
  const auto [run, page] = ReportOn(Simulated());
  for (const char* const reference :
       {"http", "src=", "href=", "url(", "@import", "<script", "<link"}) {
    EXPECT_FALSE(Holds(page, reference)) << reference;
  }
}

TEST(Report, SaysWhyACalibrationFailed) {
  const auto [run, page] =
      ReportOn(Only(Simulated(), {SampleSet::Horizontal, SampleSet::Vertical}, 4));
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Holds(page, "Verdict: unusable"));
  EXPECT_TRUE(Holds(page, "Why it failed, and what to do"));
  EXPECT_TRUE(Holds(page, "There are 4 samples of the turn"));
  EXPECT_FALSE(Holds(page, ", after"));
  EXPECT_EQ(DotsPerPicture(page, "turn"), std::vector<int>(4, 4));
  EXPECT_TRUE(Holds(page, "</html>"));
}

TEST(Report, OfASessionWithoutTurnsIsAPageAllTheSame) {
  const auto [run, page] = ReportOn(kSessionHeader);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Holds(page, "Verdict: unusable"));
  EXPECT_EQ(Count(page, "There are no samples."), 4);
  EXPECT_TRUE(Holds(page, "Missing: 0° to 360°."));
}

std::string Alike(const std::string& reading, int rows) {
  std::string session = kSessionHeader;
  for (const std::string set : {"horizontal", "vertical"}) {
    for (int i = 0; i < rows; ++i) {
      session.append(set).append(",08:00:00,0,0,").append(reading + "," + reading + "\n");
    }
  }
  return session;
}

TEST(Report, PutsNothingButNumbersIntoItsPictures) {
  const std::regex no_number("[ \"ML-](nan|inf)", std::regex::icase);
  for (const std::string reading :
       {"0,0,0", "1000,-2000,3000", "1e12,1e12,1e12", "1e200,-1e200,1e300", "1e-300,0,1e-300"}) {
    const auto [run, page] = ReportOn(Alike(reading, 12));
    EXPECT_EQ(run.status, 1) << reading;
    EXPECT_TRUE(Holds(page, "</html>")) << reading;
    EXPECT_FALSE(std::regex_search(page, no_number)) << reading;
  }
}

TEST(Report, SaysThatReadingsAreTooLargeToBeDrawn) {
  const auto [run, page] = ReportOn(Alike("1e200,-1e200,1e300", 12));
  EXPECT_EQ(Count(page, "The readings are too large to be drawn."), 4);
}

TEST(Report, SaysHowTheSamplesWereSelected) {
  const auto [run, page] = ReportOn(Simulated(), {"--screen", "60"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Holds(page, "Selected by the screening, about 60 of each turn."));
}

TEST(Report, OnStandardOutputLeavesTheTablesToStandardError) {
  const TemporaryFolder folder;
  const auto run =
      RunProgram({"calibrate", "-", "-o", folder.File("pole.txt"), "--report", "-"}, Simulated());
  ASSERT_EQ(run.status, 0);
  EXPECT_EQ(run.out.rfind("<!DOCTYPE html>", 0), 0U);
  EXPECT_EQ(run.out.substr(run.out.size() - 8), "</html>\n");
  EXPECT_TRUE(Holds(run.err, "\nverdict: good\n"));
}

TEST(Report, InAMissingFolderIsAnErrorBeforeParametersAreWritten) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt"), "--report",
                               folder.File("missing/report.html")},
                              Simulated());
  EXPECT_EQ(run.status, 2);
  EXPECT_TRUE(Holds(run.err, "cannot be opened for writing")) << run.err;
  EXPECT_EQ(folder.CountFiles(), 0);
}

TEST(Report, StaysAsItWasWhenTheSessionCannotBeRead) {
  const TemporaryFolder folder;
  folder.Write("report.html", "old");
  const auto run = RunProgram(
      {"calibrate", "-", "-o", folder.File("pole.txt"), "--report", folder.File("report.html")},
      std::string(kSessionHeader) + "horizontal,08:00:00,0,0,x,2,3,4,5,6\n");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(folder.Read("report.html"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(Report, StaysAsItWasWhenTheParametersCannotBeWritten) {
  const TemporaryFolder folder;
  folder.Write("report.html", "old");
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("missing/pole.txt"), "--report",
                               folder.File("report.html")},
                              Simulated());
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(folder.Read("report.html"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(Report, DoesNotTakeTheParametersPlace) {
  const TemporaryFolder folder;
  const auto run = RunProgram(
      {"calibrate", "-", "-o", folder.File("pole.txt"), "--report", folder.File("pole.txt")},
      Simulated());
  EXPECT_EQ(run.status, 2);
  EXPECT_TRUE(Holds(run.err, "is named for two outputs")) << run.err;
  EXPECT_FALSE(folder.Has("pole.txt"));
}

TEST(Report, IsTheSameBytesInALocaleWithCommas) {
  struct Commas : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::string session = Simulated();
  const std::string plain = ReportOn(session).page;
  const std::locale old = std::locale::global(std::locale(std::locale(), new Commas));
  const std::string with_commas = ReportOn(session).page;
  std::locale::global(old);
  EXPECT_FALSE(plain.empty());
  EXPECT_EQ(with_commas, plain);
}

std::string PageOf(const std::string& session_name) {
  const std::vector<PoseSensorData> none;
  const tiltpole::CalibrationQuality quality =
      tiltpole::JudgeFailedCalibration(none, none, {L"a message"});
  return ReportPage({session_name, "", none, none, std::nullopt, quality});
}

TEST(ReportPage, EscapesTheNameOfTheSession) {
  const std::string page = PageOf("a<b>&\"c\".csv");
  EXPECT_TRUE(Holds(page, "<title>Calibration of a&lt;b&gt;&amp;&quot;c&quot;.csv</title>"));
  EXPECT_FALSE(Holds(page, "a<b"));
}

TEST(ReportPage, KeepsNamesBeyondAscii) {
  EXPECT_TRUE(Holds(PageOf("Blöcke-点-😀.csv"), "Session: Blöcke-点-😀.csv"));
}

std::string Escaped(const std::string& text) {
  Markup page;
  page.Text(text);
  return page.Page();
}

TEST(Markup, ReplacesWhatIsNoUtf8) {
  const std::string sign = "\xEF\xBF\xBD";
  EXPECT_EQ(Escaped("a\xFFz"), "a" + sign + "z");
  EXPECT_EQ(Escaped("\xC3"), sign);                                   // cut off
  EXPECT_EQ(Escaped("\xC0\x80"), sign + sign);                        // too long for its sign
  EXPECT_EQ(Escaped("\xED\xA0\x80"), sign + sign + sign);             // half of a pair
  EXPECT_EQ(Escaped("\xF4\x90\x80\x80"), sign + sign + sign + sign);  // beyond the last sign
}

TEST(Markup, ReplacesSignsThatXmlForbids) {
  const std::string sign = "\xEF\xBF\xBD";
  EXPECT_EQ(Escaped(std::string("a\0b", 3)), "a" + sign + "b");
  EXPECT_EQ(Escaped("\x1B[K\t\n"), sign + "[K\t\n");
  EXPECT_EQ(Escaped("\xEF\xBF\xBE"), sign + sign + sign);
}

TEST(Markup, ClosesElementsInTheirOrder) {
  Markup page;
  page.Open("div", {{"class", "a\"b"}});
  page.Leaf("p", "1 < 2");
  page.Empty("line", {{"x1", "0"}});
  page.Close();
  EXPECT_EQ(page.Page(), "<div class=\"a&quot;b\"><p>1 &lt; 2</p>\n<line x1=\"0\"/>\n</div>\n");
}

RC_GTEST_PROP(Markup, AnyBytesLeaveNoSignWithAMeaning, (const std::string& text)) {
  const std::string escaped = Escaped(text);
  RC_ASSERT(escaped.find_first_of(std::string("<>\"\0", 4)) == std::string::npos);
  for (auto at = escaped.find('&'); at != std::string::npos; at = escaped.find('&', at + 1)) {
    RC_ASSERT(escaped.find(';', at) - at <= 5U);
  }
}

PoseSensorData Reading(double x, double y, double z) {
  PoseSensorData sample;
  sample.MagneticX_A = x;
  sample.MagneticY_A = y;
  sample.MagneticZ_A = z;
  sample.MagneticX_B = -x;
  sample.MagneticY_B = -y;
  sample.MagneticZ_B = z;
  return sample;
}

TEST(TurnTrace, RawReadingsAreShownOnTheirOwnAxes) {
  tiltpole::TurnFigures figures;
  figures.CentreFirst = 100.0;
  figures.CentreSecond = -50.0;
  figures.RadiusMean = 10.0;
  const TurnTrace trace =
      TraceBefore({Reading(100.0, -38.0, 7.0)}, Magnetometer::A, Turn::Horizontal, figures);
  ASSERT_EQ(trace.points.size(), 1U);
  EXPECT_EQ(trace.points[0].first, 100.0);
  EXPECT_EQ(trace.points[0].second, -38.0);
  EXPECT_EQ(trace.points[0].azimuth, 90.0);
  EXPECT_EQ(trace.points[0].distance, 2.0);
}

TEST(TurnTrace, CorrectedReadingsOfBothMagnetometersTellTheSameHeading) {
  // The correction turns the signs of y and z: the field to the left of x means heading 90.
  tiltpole::TurnFigures figures;
  figures.RadiusMean = 2000.0;
  for (const Magnetometer one : {Magnetometer::A, Magnetometer::B}) {
    const TurnTrace trace =
        TraceAfter({Reading(0.0, -2000.0, 4000.0)}, one, Turn::Horizontal, figures);
    EXPECT_EQ(trace.points[0].azimuth, 90.0);
    EXPECT_EQ(trace.points[0].distance, 0.0);
  }
}

TEST(TurnTrace, TheVerticalTurnIsSeenFromTheSide) {
  tiltpole::TurnFigures figures;
  figures.RadiusMean = 5.0;
  for (const Magnetometer one : {Magnetometer::A, Magnetometer::B}) {
    const TurnTrace trace = TraceAfter({Reading(3.0, 9.0, 4.0)}, one, Turn::Vertical, figures);
    EXPECT_EQ(trace.points[0].first, 3.0);
    EXPECT_EQ(trace.points[0].second, -4.0);
    EXPECT_EQ(trace.points[0].distance, 0.0);
  }
}

TurnTrace TraceWithStray(std::size_t count, std::size_t stray) {
  TurnTrace trace;
  trace.radius = 100.0;
  for (std::size_t i = 0; i < count; ++i) {
    trace.points.push_back({static_cast<double>(i), 0.0, 0.0, i == stray ? -30.0 : 1.0});
  }
  return trace;
}

RC_GTEST_PROP(Thinned, KeepsTheFarthestReadingAndEachOnlyOnce, ()) {
  const auto count = *rc::gen::inRange<std::size_t>(1, 9000);
  const auto stray = *rc::gen::inRange<std::size_t>(0, count);
  const std::vector<TracePoint> shown = Thinned(TraceWithStray(count, stray));
  RC_ASSERT(shown.size() == std::min(count, kMostPoints));
  std::vector<double> places;
  places.reserve(shown.size());
  for (const TracePoint& point : shown) places.push_back(point.first);
  RC_ASSERT(std::count(places.begin(), places.end(), static_cast<double>(stray)) == 1);
  std::sort(places.begin(), places.end());
  RC_ASSERT(std::adjacent_find(places.begin(), places.end()) == places.end());
}

TEST(RoundTicks, StandAtRoundValues) {
  const auto texts = [](double from, double to) {
    std::vector<std::string> result;
    for (const Tick& tick : RoundTicks({from, to, 0.0, 1.0})) result.push_back(tick.text);
    return result;
  };
  using Texts = std::vector<std::string>;
  EXPECT_EQ(texts(-2.4, 2.4), (Texts{"-2", "-1", "0", "1", "2"}));
  EXPECT_EQ(texts(-2310.0, 2310.0), (Texts{"-2000", "-1000", "0", "1000", "2000"}));
  EXPECT_EQ(texts(0.0, 0.7), (Texts{"0.0", "0.2", "0.4", "0.6"}));
  EXPECT_EQ(texts(100.0, 250.0), (Texts{"100", "150", "200", "250"}));
}

TEST(Dots, OutsideOfTheChartStandOnItsEdge) {
  const Chart chart = {{0.0, 10.0, 0.0, 100.0}, {0.0, 10.0, 100.0, 0.0}};
  Dots dots;
  dots.Add(chart, 5.0, 5.0);
  dots.Add(chart, 50.0, -50.0);
  Markup page;
  dots.Draw(page);
  EXPECT_EQ(dots.Beyond(), 1);
  EXPECT_TRUE(Holds(page.Page(), "d=\"M50.0 50.0h0\""));
  EXPECT_TRUE(Holds(page.Page(), "class=\"points beyond\" d=\"M100.0 100.0h0\""));
}

}  // namespace
