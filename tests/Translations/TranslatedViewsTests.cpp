#include "App/SubscriptionDialog.h"
#include "JoinPanel/PanelUnderTest.h"
#include "KeloUpdates/UpdateWindow.h"
#include "Onboarding/FirstRun.h"
#include "Settings/SettingsUnderTest.h"
#include "Translations/InstallTranslations.h"
#include "support/KeptViews.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// Languages differ in the length of their words: whether every view has room for all of its texts.
namespace mivora {

namespace {

/// What another platform calls things.
const QRegularExpression foreign(QStringLiteral(
    "\\bMac\\b|[Mm]enu bar|System Settings|Internet Accounts|Privacy|Menüleiste|Systemeinstellungen|"
    "Internetkonten|Datenschutz|barre des menus|Réglages|Comptes Internet|Confidentialité"));

/// The texts below `item` that are cut off, or that reach beyond `room` or their row.
void findClippedTexts(QQuickItem *item, const QRectF &room, QStringList &clipped)
{
    if (!item->isVisible())
        return;
    const QString text = item->property("text").toString();
    const bool isText = item->property("contentWidth").isValid() && item->property("truncated").isValid();
    if (isText && !text.isEmpty()) {
        const QRectF rect = item->mapRectToScene(item->boundingRect());
        const bool isCut = item->property("truncated").toBool() ||
                           item->property("contentWidth").toReal() > item->width() + 1 ||
                           item->property("contentHeight").toReal() > item->height() + 1;
        EXPECT_FALSE(text.contains(foreign)) << text.toStdString();
        if (isCut || rect.left() < room.left() - 1 || rect.right() > room.right() + 1)
            clipped.append(text);
    }
    for (QQuickItem *child : item->childItems()) {
        // A row does not end where it should: buttons push each other out of it.
        if (item->inherits("QQuickRow") && child->isVisible() &&
            child->x() + child->width() > item->width() + 1)
            clipped.append(child->property("text").toString());
        findClippedTexts(child, room, clipped);
    }
}

/// Keeps a picture of the view in the folder $MIVORA_PICTURES, if there is one: to look at all of them, in
/// the look that MIVORA_APPEARANCE, MIVORA_COMPOSITING, QT_SCALE_FACTOR and the argument "-reverse" give.
void takePicture(QQuickWindow &view)
{
    static int number = 100;
    const QString folder = qEnvironmentVariable("MIVORA_PICTURES");
    if (!folder.isEmpty())
        view.grabWindow().save(folder + QStringLiteral("/%1.png").arg(++number));
}

class TranslatedViews : public testing::TestWithParam<std::tuple<const char *, const char *>>
{
protected:
    TranslatedViews() { set(QLocale(QLatin1String(std::get<0>(GetParam()))), std::get<1>(GetParam())); }

    ~TranslatedViews() override { set(QLocale::c(), ""); }

    static void set(const QLocale &locale, const char *textScale)
    {
        installTranslations(locale);
        qputenv("MIVORA_TEXT_SCALE", textScale);
        sharedViews();
        QEvent event(QEvent::ApplicationPaletteChange);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    }

    // No text of the window on the screen is cut off.
    static void expectRoom(QWindow *window)
    {
        auto *view = qobject_cast<QQuickWindow *>(window);
        ASSERT_TRUE(view);
        // Until the items have their places.
        QSignalSpy frames(view, &QQuickWindow::frameSwapped);
        view->update();
        ASSERT_TRUE(frames.wait());
        takePicture(*view);
        QStringList clipped;
        findClippedTexts(view->contentItem(), QRectF(QPointF(), view->contentItem()->size()), clipped);
        EXPECT_EQ(clipped.join(u'|').toStdString(), "");
    }
};

INSTANTIATE_TEST_SUITE_P(Languages, TranslatedViews,
                         testing::Combine(testing::Values("en", "de", "fr"),
                                          testing::Values("1", "1.25", "1.5")),
                         [](const auto &info) {
                             return std::get<0>(info.param) + std::to_string(info.index % 3);
                         });

} // namespace

TEST_P(TranslatedViews, settingsHaveRoom)
{
    SettingsUnderTest test;
    test.source.known = {{"1", "Work", "Google", Color{0x42, 0x85, 0xf4}}};
    test.prefs.setJoinHotKey(kelo::HotKeyCombo{49, kelo::controlKey | kelo::optionKey});
    test.prefs.setIgnoredTitles({QStringLiteral("*lunch*"), QStringLiteral("Focus time?")});
    test.controller.show(SettingsPage::general);
    for (const int minutes : {0, 1, 5}) {
        test.prefs.setLeadMinutes(minutes);
        expectRoom(test.controller.window());
    }
    using enum kelo::HotKeyState::Kind;
    for (const auto kind : {registered, waiting, refused, ended, cancelled, impossible}) {
        test.controller.setHotKeyState({kind});
        expectRoom(test.controller.window());
    }
    for (const auto access : {CalendarAuthorization::granted, CalendarAuthorization::denied,
                              CalendarAuthorization::notDetermined}) {
        test.source.access = access;
        test.source.isNothing = access == CalendarAuthorization::notDetermined;
        test.controller.show(SettingsPage::calendars);
        expectRoom(test.controller.window());
    }
}

TEST_P(TranslatedViews, walkthroughHasRoom)
{
    using enum CalendarAuthorization;
    for (const auto access : {notDetermined, denied, granted}) {
        FirstRun run(access);
        run.source.isNothing = access == granted;
        if (access == granted)
            run.source.events = {withLink(makeMeeting("Review", at("2026-03-10T10:30:00Z")))};
        run.scheduler.refresh();
        for (const auto step : {FirstRunStep::welcome, FirstRunStep::calendar, FirstRunStep::firstMeeting}) {
            run.flow.show(step);
            expectRoom(run.flow.window()->window());
        }
    }
}

TEST_P(TranslatedViews, joinPanelHasRoom)
{
    const Timestamp start = at("2026-03-10T10:30:00Z");
    PanelUnderTest test;
    for (const Seconds left : {Seconds(4000), Seconds(300), Seconds(0), Seconds(-3000)}) {
        test.panel.show(withLink(makeMeeting("Review", start), Service::meet), start - left);
        expectRoom(test.window());
    }
}

TEST_P(TranslatedViews, subscriptionsHaveRoom)
{
    SubscriptionDialog dialog(QStringLiteral("/nonexistent"), sharedViews());
    dialog.ask();
    expectRoom(dialog.window());
    dialog.tellNoStore();
    expectRoom(dialog.window());
    dialog.show({"desktop:mivora-1", "Team", "", Color{0x42, 0x85, 0xf4}});
    expectRoom(dialog.window());
}

TEST_P(TranslatedViews, updateWindowHasRoom)
{
    using namespace kelo;
    const ProgramName program{QStringLiteral("Mivora"), QStringLiteral("0.1.0")};
    const Update update{.version = QStringLiteral("1.2"),
                        .date = QDate(2026, 12, 24),
                        .notes = QStringLiteral("More room."),
                        .page = {}};
    std::vector<UpdatePage> pages{notConfiguredPage(program), checkingPage(), pageOf(NoUpdate{}, program),
                                  pageOf(update, program)};
    for (int fault = 0; fault <= int(UpdateFault::malformedFeed); ++fault)
        pages.push_back(pageOf(UpdateFault(fault), program));
    UpdateWindow window(sharedViews(), QStringLiteral("Mivora"));
    for (const UpdatePage &page : pages) {
        window.show(page, Attention::taken);
        expectRoom(window.window());
    }
}

} // namespace mivora
