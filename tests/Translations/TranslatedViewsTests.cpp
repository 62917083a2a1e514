#include "JoinPanel/PanelUnderTest.h"
#include "KeloUpdates/UpdateWindow.h"
#include "Onboarding/FirstRun.h"
#include "Settings/SettingsUnderTest.h"
#include "Translations/InstallTranslations.h"
#include "support/KeptViews.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// Languages differ in the length of their words: whether every view has room for all of its texts.
namespace mivora {

namespace {

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

class TranslatedViews : public testing::TestWithParam<const char *>
{
protected:
    TranslatedViews() { installTranslations(QLocale(QLatin1String(GetParam()))); }

    ~TranslatedViews() override { installTranslations(); }

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

INSTANTIATE_TEST_SUITE_P(Languages, TranslatedViews, testing::Values("en", "de", "fr"),
                         [](const auto &info) { return std::string(info.param); });

} // namespace

TEST(Languages, haveTheirPlurals)
{
    const std::pair<QLocale::Language, const char *> languages[] = {
        {QLocale::German, "1 Minute vorher, 2 Minuten vorher"},
        {QLocale::French, "1 minute avant, 2 minutes avant"},
        {QLocale::Japanese, "1 minute before, 2 minutes before"}};
    for (const auto &[language, expected] : languages) {
        installTranslations(QLocale(language));
        const auto before = [](int minutes) {
            return QCoreApplication::translate("GeneralPage", "%n minute(s) before", nullptr, minutes);
        };
        const QStringList texts{before(1), before(2)};
        EXPECT_EQ(texts.join(QStringLiteral(", ")).toStdString(), expected);
    }
    installTranslations();
}

TEST_P(TranslatedViews, settingsHaveRoom)
{
    SettingsUnderTest test;
    test.source.known = {{"1", "Work", "Google", Color{0x42, 0x85, 0xf4}}};
    test.prefs.setJoinHotKey(kelo::HotKeyCombo{49, kelo::controlKey | kelo::optionKey});
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
    for (const auto access : {CalendarAuthorization::granted, CalendarAuthorization::denied}) {
        test.source.access = access;
        test.controller.show(SettingsPage::calendars);
        expectRoom(test.controller.window());
    }
}

TEST_P(TranslatedViews, walkthroughHasRoom)
{
    using enum CalendarAuthorization;
    for (const auto access : {notDetermined, denied, granted}) {
        FirstRun run(access);
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
