#include "KeloSparkle/UpdateWindow.h"
#include "Onboarding/FirstRun.h"
#include "Settings/SettingsUnderTest.h"
#include "Translations/InstallTranslations.h"
#include "desktop/PanelUnderTest.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

// Languages differ in the length of their words: whether every view has room for all of its texts.
namespace mivora {

namespace {

/// The texts below \a item that are cut off, or that reach beyond \a room or their row.
void findClippedTexts(QQuickItem *item, const QRectF &room, std::vector<std::string> &clipped)
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
            clipped.push_back(text.toStdString());
    }
    for (QQuickItem *child : item->childItems()) {
        // A row does not end where it should: buttons push each other out of it.
        if (item->inherits("QQuickRow") && child->isVisible() &&
            child->x() + child->width() > item->width() + 1)
            clipped.push_back(child->property("text").toString().toStdString());
        findClippedTexts(child, room, clipped);
    }
}

/// The clipped texts of a window that has just been shown. It must have some text at all.
std::vector<std::string> clippedTexts(QWindow *window)
{
    auto *view = qobject_cast<QQuickWindow *>(window);
    if (!view)
        return {"there is no window"};
    QTest::qWait(150);
    std::vector<std::string> clipped;
    findClippedTexts(view->contentItem(), QRectF(QPointF(), view->contentItem()->size()), clipped);
    return clipped;
}

class TranslatedViews : public testing::TestWithParam<const char *>
{
protected:
    TranslatedViews() { installTranslations(QLocale(QLatin1String(GetParam()))); }

    ~TranslatedViews() override { installTranslations(); }
};

INSTANTIATE_TEST_SUITE_P(Languages, TranslatedViews, testing::Values("en", "de", "fr"),
                         [](const auto &info) { return std::string(info.param); });

const std::vector<std::string> none;

} // namespace

TEST_P(TranslatedViews, settingsHaveRoom)
{
    for (const CalendarAuthorization access :
         {CalendarAuthorization::granted, CalendarAuthorization::denied}) {
        SettingsUnderTest test;
        test.source.access = access;
        test.source.known = {{"1", "Work", "Google", Color{0x42, 0x85, 0xf4}}};
        test.prefs.setJoinHotKey(kelo::HotKeyCombo{49, kelo::controlKey | kelo::optionKey});
        for (const int minutes : {0, 1, 5}) {
            test.prefs.setLeadMinutes(minutes);
            test.controller.show(SettingsPage::general);
            EXPECT_EQ(clippedTexts(test.controller.window()), none);
        }
        test.controller.show(SettingsPage::calendars);
        EXPECT_EQ(clippedTexts(test.controller.window()), none);
    }
}

TEST_P(TranslatedViews, walkthroughHasRoom)
{
    for (const FirstRunStep step :
         {FirstRunStep::welcome, FirstRunStep::calendar, FirstRunStep::firstMeeting}) {
        for (const CalendarAuthorization access :
             {CalendarAuthorization::notDetermined, CalendarAuthorization::denied,
              CalendarAuthorization::granted}) {
            FirstRun run(access);
            run.source.events = {withLink(makeMeeting("Review", at("2026-03-10T10:30:00Z")))};
            run.scheduler.refresh();
            run.flow.show(step);
            EXPECT_EQ(clippedTexts(run.flow.window()->window()), none) << int(step) << ' ' << int(access);
        }
    }
}

TEST_P(TranslatedViews, joinPanelHasRoom)
{
    const Timestamp start = at("2026-03-10T10:30:00Z");
    PanelUnderTest test;
    for (const Seconds left : {Seconds(4000), Seconds(300), Seconds(0), Seconds(-3000)}) {
        test.panel.show(withLink(makeMeeting("Review", start), Service::meet), start - left);
        EXPECT_EQ(clippedTexts(test.window()), none) << left.count();
    }
}

TEST_P(TranslatedViews, updateWindowHasRoom)
{
    using namespace kelo;
    const ProgramName program{QStringLiteral("Mivora"), QStringLiteral("0.1.0")};
    const Update update{
        .version = QStringLiteral("1.2"), .displayVersion = QStringLiteral("1.2"), .length = 4'830'000};
    std::vector<UpdatePage> pages{
        notConfiguredPage(program),
        checkingPage(),
        noUpdatePage(program, {}),
        noUpdatePage(program, {.newest = {}, .needsNewerSystem = QStringLiteral("2.0")}),
        updatePage(program, update),
        downloadingPage(program, update, 3'100'000),
        downloadingPage(program, update, update.length),
        readyPage(program, update),
        lyingPage(QStringLiteral("/home/kim/.cache/mivora/updates/mivora_1.2_amd64.deb"))};
    for (int fault = 0; fault <= int(UpdateFault::vanished); ++fault)
        pages.push_back(failurePage(program, {UpdateFault(fault), {}}, UpdateStep::download));
    const QDBusConnection noBus(QStringLiteral("none"));
    Appearance appearance(noBus);
    ViewLoader views(appearance);
    for (const UpdatePage &page : pages) {
        UpdateWindow window(views, noBus, QStringLiteral("Mivora"));
        window.show(page, Attention::taken);
        EXPECT_EQ(clippedTexts(window.window()), none) << page.heading.toStdString();
    }
}

} // namespace mivora
