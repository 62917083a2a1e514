#include "JoinPanel/PanelText.h"
#include "MeetingTexts/CountdownText.h"
#include "MeetingTexts/ServiceName.h"
#include "Settings/GeneralPageText.h"
#include "Settings/SettingsPage.h"
#include "StatusBar/ShortTime.h"
#include "StatusBar/StatusMenu.h"
#include "StatusBar/StatusText.h"
#include "Translations/InstallTranslations.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

struct Language
{
    const char *name;
    QLocale locale;
    /// Countdowns of 59 s, 60 s, one hour, 3,901 s; short ones of 0 s and 3,901 s.
    QStringList countdowns;
    /// The panel 61 s before, at, and 125 s after the start.
    QStringList panel;
    QStringList menu;
    /// Lead times of 0, 1, 2 minutes; title lengths.
    QStringList settings;
    QString toolTip;
};

const std::vector<Language> &languages()
{
    static const std::vector<Language> all{
        {"English",
         QLocale(QLocale::English, QLocale::UnitedStates),
         {QStringLiteral("now"), QStringLiteral("1m"), QStringLiteral("1h"), QStringLiteral("1h 6m"),
          QStringLiteral("now"), QStringLiteral("1h")},
         {QStringLiteral("Starts in 2m"), QStringLiteral("Starting now"), QStringLiteral("Started 2m ago")},
         {QStringLiteral("9:00 AM  Review  · now  · Link"), QStringLiteral("Settings…"),
          QStringLiteral("More Kelo apps…"), QStringLiteral("Quit Mivora")},
         {QStringLiteral("When it starts"), QStringLiteral("1 minute before"),
          QStringLiteral("2 minutes before"), QStringLiteral("24 characters"), QStringLiteral("General")},
         QStringLiteral("Mivora needs Calendar access")},
        {"German",
         QLocale(QLocale::German),
         {QStringLiteral("jetzt"), QStringLiteral("1\u00a0min"), QStringLiteral("1\u00a0h"),
          QStringLiteral("1\u00a0h 6\u00a0min"), QStringLiteral("jetzt"), QStringLiteral("1h")},
         {QStringLiteral("Beginnt in 2\u00a0min"), QStringLiteral("Beginnt jetzt"),
          QStringLiteral("Vor 2\u00a0min begonnen")},
         {QStringLiteral("09:00  Review  · läuft  · Link"), QStringLiteral("Einstellungen\u00a0…"),
          QStringLiteral("Weitere Apps von Kelo\u00a0…"), QStringLiteral("Mivora beenden")},
         {QStringLiteral("Zu Beginn"), QStringLiteral("1 Minute vorher"), QStringLiteral("2 Minuten vorher"),
          QStringLiteral("24 Zeichen"), QStringLiteral("Allgemein")},
         QStringLiteral("Mivora braucht Zugriff auf den Kalender")},
        {"French",
         QLocale(QLocale::French),
         {QStringLiteral("maintenant"), QStringLiteral("1\u00a0min"), QStringLiteral("1\u00a0h"),
          QStringLiteral("1\u00a0h 6\u00a0min"), QStringLiteral("0m"), QStringLiteral("1h")},
         {QStringLiteral("Commence dans 2\u00a0min"), QStringLiteral("Commence maintenant"),
          QStringLiteral("Commencée il y a 2\u00a0min")},
         {QStringLiteral("09:00  Review  · en cours  · Lien"), QStringLiteral("Paramètres…"),
          QStringLiteral("Autres applications Kelo…"), QStringLiteral("Quitter Mivora")},
         {QStringLiteral("Au début"), QStringLiteral("1 minute avant"), QStringLiteral("2 minutes avant"),
          QStringLiteral("24 caractères"), QStringLiteral("Général")},
         QStringLiteral("Mivora a besoin d’accéder à l’agenda")},
    };
    return all;
}

QStringList menuTitles(const QLocale &locale)
{
    const std::vector<Meeting> today{
        withLink(makeMeeting("Review", at("2026-03-10T09:00:00Z")), Service::other)};
    MenuContents contents;
    contents.authorization = CalendarAuthorization::granted;
    contents.today = today;
    contents.now = at("2026-03-10T09:05:00Z");
    contents.formatTime = [&](Timestamp time) { return shortTime(time, QTimeZone::utc(), locale); };
    QStringList titles;
    for (const MenuEntry &entry : statusMenu(contents)) {
        if (!entry.separator)
            titles.append(entry.title);
    }
    return titles;
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
    const Timestamp start = at("2026-03-10T09:00:00Z");
    for (const Language &language : languages()) {
        SCOPED_TRACE(language.name);
        installTranslations(language.locale);
        EXPECT_EQ(language.countdowns,
                  QStringList({countdownText(Seconds(59)), countdownText(Seconds(60)),
                               countdownText(Seconds(3600)), countdownText(Seconds(3901)),
                               shortCountdownText(Seconds(0)), shortCountdownText(Seconds(3901))}));
        EXPECT_EQ(language.panel,
                  QStringList({panelTimeText(start, start - Seconds(61)), panelTimeText(start, start),
                               panelTimeText(start, start + Seconds(125))}));
        EXPECT_EQ(language.menu, menuTitles(language.locale));
        EXPECT_EQ(language.settings, QStringList({leadMinutesText(0), leadMinutesText(1), leadMinutesText(2),
                                                  titleWidthText(24), title(SettingsPage::general)}));
        EXPECT_EQ(language.toolTip,
                  statusItemState({}, {}, CalendarAuthorization::denied, start).toolTip.value_or(QString()));
    }
}

TEST_F(Languages, leaveNamesOfServicesAlone)
{
    installTranslations(QLocale(QLocale::French));
    for (const Service service : allServices) {
        const QString english = QString::fromUtf8(displayName(service).data());
        EXPECT_EQ(serviceName(service), service == Service::other ? QStringLiteral("Lien") : english);
    }
}

TEST_F(Languages, fallBackToEnglishWithItsPlurals)
{
    installTranslations(QLocale(QLocale::German));
    installTranslations(QLocale(QLocale::Japanese));
    EXPECT_EQ(leadMinutesText(1), QStringLiteral("1 minute before"));
    EXPECT_EQ(leadMinutesText(5), QStringLiteral("5 minutes before"));
    EXPECT_EQ(title(SettingsPage::calendars), QStringLiteral("Calendars"));
}

} // namespace mivora
