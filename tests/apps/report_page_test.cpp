// The page of a report as a document, and the elements that it is made of.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "apps/tiltpole/report/markup.h"
#include "apps/tiltpole/report/page.h"

namespace {

using namespace tiltpole::cli;
using tiltpole::PoseSensorData;

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
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

}  // namespace
