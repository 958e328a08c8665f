// Any sequence of calls of the C interface, with null pointers, room that is too little, numbers
// that mean nothing and texts of any length: every call ends with the result that its header
// promises, and gives what the C++ classes behind it give.

#include <array>
#include <iterator>
#include <memory>

#include "fuzz/c_interface/player.h"

namespace {

using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Player;

constexpr int kSteps = 100;

constexpr std::unique_ptr<Player> (*kPlayers[])() = {
    tiltpole_fuzz::CalibrationPlayer,
    tiltpole_fuzz::ParameterFilePlayer,
    tiltpole_fuzz::PositionPlayer,
    tiltpole_fuzz::QualityPlayer,
    tiltpole_fuzz::HorizontalScreeningPlayer,
    tiltpole_fuzz::TipPlayer,
    tiltpole_fuzz::TransformationPlayer,
    tiltpole_fuzz::VerticalScreeningPlayer,
};
constexpr std::size_t kPlayerCount = std::size(kPlayers);

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  tiltpole_fuzz::Shared shared;
  std::array<std::unique_ptr<Player>, kPlayerCount> players;
  for (int step = 0; step < kSteps && !bytes.Empty(); ++step) {
    const std::size_t which = bytes.Byte() % kPlayerCount;
    if (players[which] == nullptr) players[which] = kPlayers[which]();
    players[which]->Step(bytes, shared);
  }
  return 0;
}
