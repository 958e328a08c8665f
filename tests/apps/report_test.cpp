#include <locale>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "apps/session/number_text.h"
#include "program.h"
#include "sessions.h"
#include "support/temporary_folder.h"

namespace {

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

}  // namespace
