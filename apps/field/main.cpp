// tiltpole-field: calibrate and measure with a tilted pole, live.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>
#include <QTranslator>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "apps/field/main_window.h"
#include "apps/field/theme.h"
#include "tiltpole/version.h"

namespace {

struct Main {
  Q_DECLARE_TR_FUNCTIONS(Main)
};

const char* const kSession = "session";
const char* const kSpeed = "speed";
const char* const kParameters = "params";
const char* const kPoints = "points";
const char* const kPoleLength = "pole-length";
const char* const kSeed = "seed";
const char* const kPlay = "play";

void AddOptions(QCommandLineParser& parser) {
  parser.setApplicationDescription(
      Main::tr("Calibrates a tilted pole and measures points with it, from a session file that is "
               "played back or from a simulated pole."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addOptions({
      {kSession, Main::tr("Play this session file; without it a simulated pole is the source."),
       "file"},
      {kSpeed, Main::tr("How many times as fast as it was recorded."), "number", "1"},
      {kPlay, Main::tr("Begin to play at once.")},
      {kParameters, Main::tr("Load this parameter file."), "file"},
      {kPoints,
       Main::tr("Append points to this file; the default is tiltpole-points.csv in the "
                "folder for documents."),
       "file"},
      {kPoleLength, Main::tr("Antenna to tip, metres."), "metres", "2"},
      {kSeed, Main::tr("Seed of the simulated pole's noise."), "number", "1"},
  });
}

[[noreturn]] void WrongUsage(const QString& message) {
  static_cast<void>(std::fprintf(stderr, "tiltpole-field: %s\n", qPrintable(message)));
  std::exit(2);
}

double NumberOf(const QCommandLineParser& parser, const char* option, double least, double most) {
  bool is_number = false;
  const double number = parser.value(option).toDouble(&is_number);
  if (is_number && number >= least && number <= most) return number;
  WrongUsage(Main::tr("--%1 is '%2'; expected a number from %3 to %4")
                 .arg(QLatin1String(option), parser.value(option))
                 .arg(least)
                 .arg(most));
}

struct Numbers {
  double speed;
  double pole_length;
  double seed;
};

Numbers Parse(QCommandLineParser& parser) {
  AddOptions(parser);
  const bool parsed = parser.parse(QCoreApplication::arguments());
  if (parser.isSet("version")) parser.showVersion();
  if (parser.isSet("help") || parser.isSet("help-all")) parser.showHelp();
  if (!parsed) WrongUsage(parser.errorText());
  if (!parser.positionalArguments().isEmpty()) {
    WrongUsage(Main::tr("'%1' is no option").arg(parser.positionalArguments().constFirst()));
  }
  return {NumberOf(parser, kSpeed, 0.01, 1000.0), NumberOf(parser, kPoleLength, 0.1, 20.0),
          NumberOf(parser, kSeed, 0.0, 1e9)};
}

// An application takes its translators along when it ends; the next one needs them anew.
void LoadTranslation(QTranslator& translator) {
  const QDir program(QCoreApplication::applicationDirPath());
  if (translator.load(QLocale(), "tiltpole-field", "_", program.filePath("translations"))) {
    QCoreApplication::installTranslator(&translator);
  }
}

// Before there is a window system, so that help and version need none.
Numbers ParseWithoutWindows(QCommandLineParser& parser, int argc, char** argv) {
  const QCoreApplication without_windows(argc, argv);
  QTranslator translator;
  LoadTranslation(translator);
  return Parse(parser);
}

// The folder for documents may be missing on a fresh system; one that the operator names is not
// made, since its name may be a slip.
QString PointsFile(const QCommandLineParser& parser) {
  if (parser.isSet(kPoints)) return parser.value(kPoints);
  const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  // Where that fails, so does the opening of the file, which says so.
  static_cast<void>(documents.mkpath("."));
  return documents.filePath("tiltpole-points.csv");
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName("tiltpole-field");
  QCoreApplication::setApplicationVersion(TILTPOLE_VERSION);
  QCommandLineParser parser;
  const Numbers numbers = ParseWithoutWindows(parser, argc, argv);

  QApplication application(argc, argv);
  QTranslator translator;
  LoadTranslation(translator);
  tiltpole::field::ApplyTheme(application);
  tiltpole::field::MainWindow window(numbers.pole_length);
  window.OpenPoints(PointsFile(parser));
  window.Source().SetSpeed(numbers.speed);
  window.Source().SetSeed(static_cast<std::uint64_t>(numbers.seed));
  if (parser.isSet(kSession)) {
    window.Source().OpenSession(parser.value(kSession));
  } else {
    window.Source().OpenSimulatedPole();
  }
  if (parser.isSet(kPlay) && window.Model().Source() != nullptr) window.Model().Source()->Play();
  if (parser.isSet(kParameters)) window.Calibrate().Load(parser.value(kParameters));
  window.resize(1280, 800);
  window.show();
  return QApplication::exec();
}
