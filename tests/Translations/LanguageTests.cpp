#include "JoinPanel/JoinPanelModel.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Settings/SettingsRouter.h"
#include "StatusBar/StatusMenu.h"
#include "StatusBar/StatusText.h"
#include "Translations/InstallTranslations.h"
#include "support/MeetingFactory.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace mivora {

namespace {

QStringList menuTitles(const QLocale &locale)
{
    const std::vector<Meeting> today{
        withLink(makeMeeting("Review", at("2026-03-10T09:00:00Z")), Service::other)};
    MenuContents contents;
    contents.authorization = CalendarAuthorization::granted;
    contents.today = today;
    contents.now = at("2026-03-10T09:05:00Z");
    contents.locale = locale;
    kelo::Menu menu;
    fillStatusMenu(menu, contents, {});
    QStringList titles;
    for (const kelo::MenuItem &item : menu.items()) {
        if (!item.isSeparator)
            titles.append(item.title);
    }
    return titles;
}

QString minutesBefore(int minutes)
{
    return QCoreApplication::translate("GeneralPage", "%n minute(s) before", nullptr, minutes);
}

/// Puts the tests that follow back into English.
class Languages : public testing::Test
{
protected:
    void TearDown() override { installTranslations(); }
};

} // namespace

TEST_F(Languages, sayWhatTheTrayThePanelAndTheSettingsSay)
{
    const QLocale german(QLocale::German);
    const Timestamp start = at("2026-03-10T09:00:00Z");
    installTranslations(german);
    QStringList texts;
    for (const int seconds : {59, 60, 3600, 3901})
        texts.append(countdownText(Seconds(seconds)));
    for (const int seconds : {0, 3901})
        texts.append(shortCountdownText(Seconds(seconds)));
    for (const int afterStart : {-61, 0, 125})
        texts.append(panelTimeText(start, start + Seconds(afterStart)));
    for (const int minutes : {1, 2})
        texts.append(minutesBefore(minutes));
    texts += {title(SettingsPage::general)};
    texts += menuTitles(german);
    texts += *statusText({}, {}, CalendarAuthorization::denied, start).toolTip;
    EXPECT_EQ(
        texts.join(u'|').toStdString(),
        "jetzt|1\u00a0min|1\u00a0h|1\u00a0h 6\u00a0min|jetzt|1h|"
        "Beginnt in 2\u00a0min|Beginnt jetzt|Vor 2\u00a0min begonnen|"
        "1 Minute vorher|2 Minuten vorher|Allgemein|"
        "09:00  Review  · läuft  · Link|Einstellungen\u00a0…|Weitere Apps von Kelo\u00a0…|Mivora beenden|"
        "Mivora braucht Zugriff auf den Kalender");
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
