#include "apps/tiltpole/session_table.h"

#include <algorithm>
#include <iterator>

#include "apps/session/input_file.h"
#include "apps/session/session_reader.h"
#include "apps/tiltpole/progress.h"

namespace tiltpole::cli {

SessionTable ReadSession(const std::string& path, const std::vector<session::SampleSet>& sets,
                         Console& console, const std::string& doing) {
  session::InputFile input(path, console.in);
  session::SessionReader reader(input.Stream(), input.Name());
  SessionTable table{input.Name(), reader.Columns(), {}};
  Progress progress(console, doing, input.Size());
  session::SessionSample sample;
  while (reader.Next(sample)) {
    progress.Row(reader.Table().BytesRead());
    if (std::find(sets.begin(), sets.end(), sample.set) != sets.end()) {
      table.samples.push_back(sample);
    }
  }
  return table;
}

std::vector<session::SessionSample> SamplesOf(const SessionTable& table, session::SampleSet set) {
  std::vector<session::SessionSample> samples;
  std::copy_if(table.samples.begin(), table.samples.end(), std::back_inserter(samples),
               [set](const session::SessionSample& sample) { return sample.set == set; });
  return samples;
}

}  // namespace tiltpole::cli
