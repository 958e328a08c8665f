// Any readings for a calibration: it ends soon, shows its messages in order, and its fits are those
// of the literal writing to the last bit.

#include <ctime>
#include <vector>

#include "calibration/adjust_access.h"
#include "calibration/literal_calibration.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "support/message_capture.h"
#include "tiltpole/calibration/detail/correction_fit.h"

namespace {

using namespace tiltpole_test;
using tiltpole::CSZMatrix;
using tiltpole::detail::ConicSummation;
using tiltpole::detail::CorrectionFit;
using tiltpole::detail::FastestConicSummation;
using tiltpole::detail::ReadingsOf;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;

constexpr int kMostSamples = 40;
// An unhindered calibration takes a small part of a second. This is for one with sanitizers, on a
// machine that has much else to do.
constexpr double kMostSeconds = 10.0;

// A turn of some kind, of which the input replaces readings.
void Disturb(Bytes& bytes, Turn& turn) {
  for (int i = bytes.Between(0, 7); i > 0 && !turn.empty(); --i) {
    Reading& reading = turn[bytes.Byte() % turn.size()];
    reading[bytes.Byte() % 3U] = bytes.AnyDouble();
  }
}

Turn WrittenTurn(Bytes& bytes, int count) {
  Turn turn;
  const bool any_double = bytes.Flag();
  for (int i = 0; i < count; ++i) {
    Reading reading{};
    for (double& value : reading) value = any_double ? bytes.AnyDouble() : bytes.Count();
    turn.push_back(reading);
  }
  return turn;
}

Turns AnyTurns(Bytes& bytes, int horizontal, int vertical) {
  const int kinds = static_cast<int>(Kind::kKinds);
  const int kind = bytes.Between(0, kinds);
  if (kind == kinds) return {WrittenTurn(bytes, horizontal), WrittenTurn(bytes, vertical)};
  const auto seed = static_cast<std::uint64_t>(bytes.Byte()) << 8U | bytes.Byte();
  Turns turns = RandomTurns(static_cast<Kind>(kind), horizontal, vertical, seed);
  Disturb(bytes, turns.horizontal);
  Disturb(bytes, turns.vertical);
  return turns;
}

void Calibrate(const Session& session) {
  const MessageCapture messages;
  AdjustAccess adjust;
  for (const auto& sample : session.horizontal) adjust.Horizontal_Add(&sample);
  for (const auto& sample : session.vertical) adjust.Vertical_Add(&sample);
  const std::clock_t begin = std::clock();
  const int result = adjust.Adjust();
  const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
#ifdef TILTPOLE_FUZZ
  Require(seconds < kMostSeconds, "a calibration ends soon");
#else
  static_cast<void>(seconds);  // a test asserts no time
  static_cast<void>(kMostSeconds);
#endif
  Require(result == 0 || result == 1, "1 or 0");
  const std::size_t shown = messages.shown.size();
  Require(result == 1 ? shown == 0 : shown >= 1 && shown <= 3, "up to three messages on failure");
}

// One fit, ended after a few passes, since the literal writing takes its time.
void CompareFit(const Turns& turns, int cap) {
  CorrectionOutcome literal;
  {
    const MessageCapture messages;
    literal = LiteralMagCorrPara(MatrixOf(turns.horizontal), MatrixOf(turns.vertical), cap);
  }
  // Sets as small as these are fitted without bounds; here once with them, too.
  ConicSummation withBounds = FastestConicSummation();
  withBounds.fewestToBound = 0;
  for (const ConicSummation& way : {FastestConicSummation(), withBounds}) {
    const MessageCapture messages;
    tiltpole::Incline_MagneticCorrectParameter out;
    CorrectionFit fit(ReadingsOf(MatrixOf(turns.horizontal)), ReadingsOf(MatrixOf(turns.vertical)),
                      way);
    Require(fit.Run(out, cap) == literal.result, "the literal writing succeeds and fails alike");
    Require(SameBits(out, literal.par), "the same correction to the last bit");
    Require(messages.shown == literal.shown, "the same messages");
  }
}

void ComparePrimitives(const CSZMatrix& data, int which) {
  const MessageCapture messages;
  const AdjustAccess adjust;
  CSZMatrix result;
  const int ellipse = adjust.EllipseFit(data, which, result);
  const CSZMatrix slopes = adjust.LineFit(data, which);
  if (data.GetRow() < 5 || which < 0 || which > 2) return;
  const EllipseOutcome plain = LiteralEllipseFit(data, which);
  Require(ellipse == plain.result, "an ellipse or not");
  for (unsigned i = 0; i < 5; ++i) {
    Require(SameBits(result.GetData(i), plain.coefficients[i]), "the same conic to the last bit");
  }
  const std::vector<double> plain_slopes = LiteralLineFit(data, which);
  for (unsigned i = 0; i < 2; ++i) {
    Require(SameBits(slopes.GetData(i), plain_slopes[i]), "the same slopes to the last bit");
  }
}

void Filter(Bytes& bytes) {
  CSZMatrix matrix(static_cast<unsigned>(bytes.Between(0, 40)),
                   static_cast<unsigned>(bytes.Between(0, 9)));
  for (unsigned i = 0; i < matrix.GetRow(); ++i) {
    for (unsigned j = 0; j < matrix.GetCol(); ++j) matrix.SetData(i, j, bytes.AnyDouble());
  }
  const unsigned rows = matrix.GetRow();
  AdjustAccess adjust;
  adjust.MatrixFilter(matrix);
  Require(matrix.GetRow() <= rows, "a filter adds no rows");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  const std::uint8_t what = bytes.Byte();
  if (what % 8 == 7) {
    Filter(bytes);
    return 0;
  }
  const int horizontal = bytes.Between(0, kMostSamples);
  const int vertical = bytes.Between(0, kMostSamples);
  const Turns turns = AnyTurns(bytes, horizontal, vertical);
  ComparePrimitives(MatrixOf(turns.horizontal), bytes.Between(-1, 3));
  if (what % 8 == 0) {
    CompareFit(turns, bytes.Between(1, 3));
  } else {
    Calibrate(SessionOf(turns, AnyTurns(bytes, horizontal, vertical)));
  }
  return 0;
}
