#include "JoinPanel/JoinPanelModel.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Settings/SettingsRouter.h"
#include "Translations/InstallTranslations.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace mivora {

static std::string textsIn(QLocale::Language language)
{
    installTranslations(QLocale(language));
    const auto minutesBefore = [](int minutes) {
        return QCoreApplication::translate("GeneralPage", "%n minute(s) before", nullptr, minutes);
    };
    const Timestamp start{};
    const QStringList texts{countdownText(Seconds(3901)), panelTimeText(start, start - Seconds(61)),
                            minutesBefore(1), minutesBefore(2), title(SettingsPage::general)};
    return texts.join(u'|').toStdString();
}

TEST(Languages, areGermanOrEnglishWithTheirPlurals)
{
    EXPECT_EQ(textsIn(QLocale::German),
              "1\u00a0h 6\u00a0min|Beginnt in 2\u00a0min|1 Minute vorher|2 Minuten vorher|Allgemein");
    EXPECT_EQ(textsIn(QLocale::Japanese), "1h 6m|Starts in 2m|1 minute before|2 minutes before|General");
    installTranslations();
}

} // namespace mivora
