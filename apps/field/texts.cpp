#include "apps/field/texts.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>
#include <cmath>

#include "apps/field/stored_point.h"
#include "apps/session/number_text.h"

namespace tiltpole::field {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(Texts)
};

}  // namespace

QString Translated(const std::wstring& sentence) {
  QString english = QString::fromStdWString(sentence);
  // A number of its own: not the 2 of "x2", but the dot of "1.5" belongs to it.
  static const QRegularExpression number(QStringLiteral("(?<![\\w.])-?\\d+(\\.\\d+)?(?!\\w)"));
  QStringList numbers;
  QString pattern;
  qsizetype end = 0;
  for (auto matches = number.globalMatch(english); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    numbers.append(match.captured());
    pattern +=
        english.mid(end, match.capturedStart() - end) + u'%' + QString::number(numbers.size());
    end = match.capturedEnd();
  }
  pattern += english.mid(end);
  QString text = QCoreApplication::translate("tiltpole", pattern.toUtf8().constData());
  if (text == pattern) return english;
  for (const QString& value : numbers) text = text.arg(value);
  return text;
}

QString VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::Good:
      return Texts::tr("Good");
    case Verdict::Usable:
      return Texts::tr("Usable");
    case Verdict::Poor:
      return Texts::tr("Poor");
    case Verdict::Unusable:
      break;
  }
  return Texts::tr("Unusable");
}

QString CalibrationText(const CalibrationState& state) {
  if (state.verdict && *state.verdict == Verdict::Unusable) {
    return Texts::tr("CALIBRATION UNUSABLE");
  }
  if (!state.calibrated) return Texts::tr("NOT CALIBRATED");
  if (!state.verdict) return Texts::tr("Loaded, not checked");
  return Texts::tr("Calibration: %1").arg(VerdictText(*state.verdict).toLower());
}

QString FlagWords(unsigned flags) {
  QStringList words;
  if ((flags & kPoleMoved) != 0) words += Texts::tr("pole moved");
  if ((flags & kMagnetometersDisagree) != 0) words += Texts::tr("magnetometers disagree");
  if ((flags & kNotCalibrated) != 0) words += Texts::tr("not calibrated");
  if ((flags & kShortAverage) != 0) words += Texts::tr("short average");
  if ((flags & kNoAntenna) != 0) words += Texts::tr("no antenna position");
  return words.isEmpty() ? Texts::tr("OK") : words.join(QStringLiteral(", "));
}

QString Metres(double value) {
  if (!std::isfinite(value)) return QStringLiteral("–");
  return QString::fromStdString(session::FixedText(value, 3));
}

QString Degrees(double value) {
  if (!std::isfinite(value)) return QStringLiteral("–");
  return QString::fromStdString(session::FixedText(value, 1)) + QStringLiteral("°");
}

}  // namespace tiltpole::field
