// Any bytes as the point pairs and the points of the command that transforms between two plane
// systems: it is done, or says why not.

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "apps/tiltpole/command_line.h"
#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "support/temporary_folder.h"
#include "tiltpole/platform/text.h"

namespace {

using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;

constexpr char kBetweenPairsAndPoints = '\x1e';

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const tiltpole_test::TemporaryFolder folder;
  Bytes bytes(data, size);
  const std::uint8_t options = bytes.Byte();
  const std::string content = bytes.Rest();
  const std::size_t end_of_pairs = content.find(kBetweenPairsAndPoints);

  const std::wstring rows = folder / L"rows.csv";
  std::filesystem::remove(tiltpole_test::NativePath(rows));
  std::vector<std::string> arguments = {"transform", "-", "--output",
                                        tiltpole::detail::NarrowText(rows)};
  if ((options & 1U) != 0) arguments.emplace_back("--json");
  if (end_of_pairs != std::string::npos) {
    const std::wstring points = folder / L"points.csv";
    tiltpole_test::WriteBytes(points, content.substr(end_of_pairs + 1));
    arguments.emplace_back("--points");
    arguments.push_back(tiltpole::detail::NarrowText(points));
    if ((options & 2U) != 0) arguments.emplace_back("--inverse");
  }

  std::istringstream in(content.substr(0, end_of_pairs));
  std::ostringstream out;
  std::ostringstream err;
  tiltpole::cli::Console console{in, out, err};
  const int status = tiltpole::cli::RunCommandLine(arguments, console);
  Require(status >= 0 && status <= 2, "one of the three ways to end");
  const std::string said = err.str();
  Require(status == 0 || !said.empty(), "a failure says why");
  Require(std::filesystem::exists(tiltpole_test::NativePath(rows)) == (status == 0),
          "the rows appear when all is done, or not at all");
  Require(status == 0 || std::count(said.begin(), said.end(), '\n') <= 2, "and in a line or two");
  return 0;
}
