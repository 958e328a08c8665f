// The library's sentences in the operator's language.

#include "apps/field/texts.h"

#include <QApplication>
#include <QTranslator>
#include <string_view>

#include <gtest/gtest.h>

namespace tiltpole::field {
namespace {

/// Knows one sentence, with its numbers the other way round.
class BackwardsTranslator : public QTranslator {
 public:
  BackwardsTranslator() { QCoreApplication::installTranslator(this); }

  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                    int /*n*/) const override {
    if (std::string_view(context) != "tiltpole") return {};
    if (std::string_view(source) != "Sensor x2 has %1 samples from %2 to %3.") return {};
    return QStringLiteral("Von %2 bis %3 hat der Sensor x2 %1 Werte.");
  }
};

TEST(TranslatedSentence, HasItsNumbersWhereTheTranslationPutsThem) {
  const BackwardsTranslator translator;
  EXPECT_EQ(Translated(L"Sensor x2 has 21 samples from -1.5 to 90."),
            QStringLiteral("Von -1.5 bis 90 hat der Sensor x2 21 Werte."));
  EXPECT_EQ(Translated(L"Sensor x2 has 4 samples from 0 to 2.25."),
            QStringLiteral("Von 0 bis 2.25 hat der Sensor x2 4 Werte."));
}

TEST(TranslatedSentence, StaysAsItIsWithoutATranslation) {
  EXPECT_EQ(Translated(L"Sensor x2 has 21 samples from -1.5 to 90."),
            QStringLiteral("Sensor x2 has 21 samples from -1.5 to 90."));
  const BackwardsTranslator translator;
  EXPECT_EQ(Translated(L"All 72 directions, 100 % of them."),
            QStringLiteral("All 72 directions, 100 % of them."));
}

}  // namespace
}  // namespace tiltpole::field
