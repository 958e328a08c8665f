#pragma once

// Plays a session file back.

#include <cstddef>
#include <deque>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "apps/field/sample_source.h"
#include "apps/session/input_file.h"
#include "apps/session/session_reader.h"

namespace tiltpole::field {

/// A session file at its own speed or another, read as it is played.
///
/// The file's clock has whole seconds: the rows of one second are spread evenly over it. Recorded
/// pauses are cut to a second. Where the turns end and the points begin the replay pauses, so that
/// there is time to calibrate. A row that cannot be read ends the replay as Broken, after all rows
/// before it were given.
class ReplaySource : public SampleSource {
 public:
  /// Opens the file and reads its header; session::InputError if that is not possible.
  /// @param path  UTF-8
  explicit ReplaySource(const std::string& path);

  std::vector<SourceSample> Advance(double wall_seconds) override;
  SourceState State() const override { return state_; }
  std::string Fault() const override { return fault_; }
  void Play() override;
  void Pause() override;
  std::string Name() const override { return reader_.Table().Name(); }
  std::optional<double> Progress() const override;

 private:
  bool ReadSecond();
  bool ReadRow(session::SessionSample& row);
  bool StopsBeforePoints() const;

  session::InputFile file_;
  session::SessionReader reader_;
  SourceState state_ = SourceState::Paused;
  std::string fault_;
  std::deque<SourceSample> due_;
  std::optional<session::SessionSample> ahead_;
  std::optional<SampleSet> last_given_;
  bool begun_ = false;
  double second_begins_ = 0.0;
  double clock_ = 0.0;
};

}  // namespace tiltpole::field
