#include "JoinPanel/JoinPanelModel.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Settings/SettingsRouter.h"
#include "Translations/InstallTranslations.h"
#include "support/MeetingFactory.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace mivora {

/// Puts the tests that follow back into English.
class Languages : public testing::Test
{
protected:
    void TearDown() override { installTranslations(); }

    static QString minutesBefore(int minutes)
    {
        return QCoreApplication::translate("GeneralPage", "%n minute(s) before", nullptr, minutes);
    }
};

TEST_F(Languages, sayWhatThePanelAndTheSettingsSay)
{
    const Timestamp start = at("2026-03-10T09:00:00Z");
    installTranslations(QLocale(QLocale::German));
    QStringList texts;
    for (const int seconds : {59, 3901})
        texts.append({countdownText(Seconds(seconds)), shortCountdownText(Seconds(seconds))});
    for (const int afterStart : {-61, 125})
        texts.append(panelTimeText(start, start + Seconds(afterStart)));
    texts.append({minutesBefore(1), minutesBefore(2), title(SettingsPage::general)});
    EXPECT_EQ(texts.join(u'|').toStdString(), "jetzt|jetzt|1\u00a0h 6\u00a0min|1h|"
                                              "Beginnt in 2\u00a0min|Vor 2\u00a0min begonnen|"
                                              "1 Minute vorher|2 Minuten vorher|Allgemein");
}

TEST_F(Languages, fallBackToEnglishWithItsPlurals)
{
    installTranslations(QLocale(QLocale::German));
    installTranslations(QLocale(QLocale::Japanese));
    EXPECT_EQ(minutesBefore(1), QStringLiteral("1 minute before"));
    EXPECT_EQ(minutesBefore(5), QStringLiteral("5 minutes before"));
    EXPECT_EQ(title(SettingsPage::calendars), QStringLiteral("Calendars"));
}

} // namespace mivora
