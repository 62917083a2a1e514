#include "Preferences/Preferences.h"
#include "Preferences/Settings.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <gmock/gmock.h>

using namespace mivora;
using kelo::HotKeyCombo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = MemoryDefaultsStore::Kind;

namespace {

struct Fixture
{
    explicit Fixture(const QJsonObject &stored = {}, Kind kind = Kind::preview) : store(kind, stored) {}

    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences preferences{store, loginItem};
};

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

/// All settings as they are read, in the order of their declaration.
std::string told(const Preferences &read)
{
    QJsonArray without, services;
    for (const std::string &id : read.disabledCalendarIDs())
        without.append(QString::fromStdString(id));
    for (const Service service : read.browserServices())
        services.append(QString::fromUtf8(rawValue(service)));
    const QByteArray shortcut = read.joinHotKey() ? read.joinHotKey()->toJson() : "none";
    QJsonArray all;
    all << QJsonArray::fromStringList(read.ignoredTitles()) << read.ignoreUnanswered()
        << read.ignoreWithoutOthers() << read.showTitle() << read.titleWidth() << read.leadMinutes()
        << rawValue(read.panelCorner()) << read.remindWithoutLink() << QString::fromUtf8(shortcut) << without
        << services << read.hasCompletedOnboarding() << read.hideTitleWhileInhibited();
    return QJsonDocument(all).toJson(QJsonDocument::Compact).toStdString();
}

} // namespace

TEST(Preferences, whatIsStoredIsReadAsItIsMeantAndNotRewritten)
{
    const char *const defaults = R"([[],false,false,true,24,1,"topRight",false,"none",[],[],false,false])";
    const std::pair<const char *, const char *> rows[] = {
        {"{}", defaults},
        {R"({"showTitle": "perhaps", "titleWidth": 9.5, "leadMinutes": true, "panelCorner": 2,
             "remindWithoutLink": "true", "joinHotKey": 9, "disabledCalendarIDs": "a", "browserServices": 3,
             "hasCompletedOnboarding": 7, "hideTitleWhileInhibited": 1, "ignoredTitles": "*", "ignoreUnanswered": 1,
             "ignoreWithoutOthers": []})",
         defaults},
        {R"({"titleWidth": 7})", ",true,8,"},
        {R"({"titleWidth": 60})", ",true,60,"},
        {R"({"titleWidth": 4294967305})", ",true,60,"}, // more than 32 bits
        {R"({"leadMinutes": 0})", "24,0,"},
        {R"({"leadMinutes": 4294967298})", "24,1,"},
        {R"({"panelCorner": "BottomLeft"})", R"("topRight")"},
        {R"({"panelCorner": "bottomRight"})", R"("bottomRight")"},
        {R"({"browserServices": ["zoom", "Zoom", "skype"]})", R"([],["zoom"],)"},
        {R"({"joinHotKey": "broken"})", R"("none")"},
        {R"({"joinHotKey": "{\"keyCode\":65536,\"modifiers\":1}"})", R"("none")"},
        {R"({"joinHotKey": "{\"keyCode\":65535,\"modifiers\":1}"})", R"({\"keyCode\":65535)"},
    };
    for (const auto &[stored, read] : rows) {
        const Fixture fixture(json(stored));
        EXPECT_THAT(told(fixture.preferences), HasSubstr(read)) << stored;
        EXPECT_EQ(fixture.store.values(), json(stored));
    }
}

TEST(Preferences, aChangeIsAnnouncedOnceWrittenEveryTimeAndReadAgain)
{
    Fixture fixture;
    Preferences &set = fixture.preferences;
    std::vector<std::unique_ptr<QSignalSpy>> announced;
    const QMetaObject *meta = set.metaObject();
    for (int signal = meta->methodOffset(); signal < meta->methodCount(); ++signal)
        announced.push_back(std::make_unique<QSignalSpy>(&set, meta->method(signal)));
    const QJsonObject stored = json(R"({
        "showTitle": false, "titleWidth": 30, "leadMinutes": 5, "panelCorner": "topLeft", "remindWithoutLink": true,
        "joinHotKey": "{\"keyCode\":38,\"modifiers\":4352}", "disabledCalendarIDs": ["B", "a", "b", "é"],
        "browserServices": ["meet", "teams", "zoom"], "hasCompletedOnboarding": true, "hideTitleWhileInhibited": true,
        "ignoredTitles": ["b*", "a"], "ignoreUnanswered": true, "ignoreWithoutOthers": true})");
    for (const int shortcutsSet : {1, 2}) {
        set.setShowTitle(false);
        set.setTitleWidth(30);
        set.setLeadMinutes(5);
        set.setPanelCorner(PanelCorner::topLeft);
        set.setRemindWithoutLink(true);
        set.setJoinHotKey(HotKeyCombo{38, 0x1100});
        set.setDisabledCalendarIDs({"b", "é", "a", "B"});
        set.setBrowserServices({Service::zoom, Service::teams, Service::meet});
        set.setHasCompletedOnboarding(true);
        set.setHideTitleWhileInhibited(true);
        set.setIgnoredTitles({QStringLiteral("b*"), QStringLiteral("a")});
        set.setIgnoreUnanswered(true);
        set.setIgnoreWithoutOthers(true);
        EXPECT_EQ(fixture.store.values(), stored);
        EXPECT_EQ(told(Fixture(stored).preferences), told(set));
        for (const auto &spy : announced) {
            const QByteArray name = spy->signal();
            const int ofThree = name.startsWith("ignored") ? 3 : name.startsWith("launchAtLogin") ? 0 : 1;
            EXPECT_EQ(spy->count(), name.startsWith("joinHotKeyWasSet") ? shortcutsSet : ofThree)
                << name.data();
        }
        for (const QString &key : stored.keys())
            fixture.store.setValue(key, QJsonValue::Undefined);
    }
}

TEST(Preferences, whatAnotherProcessWritesIsReadInWholeThenAnnounced)
{
    Fixture fixture(json(R"({"joinHotKey": "broken"})"));
    Preferences &preferences = fixture.preferences;
    QSignalSpy lead(&preferences, &Preferences::leadMinutesChanged);
    QSignalSpy shortcut(&preferences, &Preferences::joinHotKeyWasSet);
    preferences.setJoinHotKey(std::nullopt);
    EXPECT_EQ(shortcut.count(), 1) << "also without a change";
    EXPECT_THAT(fixture.store.values(), IsEmpty());

    std::string seenWithTheWidth;
    const QMetaObject::Connection observer = QObject::connect(&preferences, &Preferences::titleWidthChanged,
                                                              [&] { seenWithTheWidth = told(preferences); });
    fixture.store.setValue(settingsKey::titleWidth, 500);
    fixture.store.setValue(settingsKey::leadMinutes, 4);
    fixture.store.setValue(settingsKey::joinHotKey, QString::fromUtf8(HotKeyCombo{1, 2}.toJson()));
    Q_EMIT fixture.store.changedExternally();
    QObject::disconnect(observer);
    EXPECT_THAT(seenWithTheWidth, HasSubstr(R"(60,1,"topRight",false,"{\"keyCode\":1)"));
    EXPECT_EQ(shortcut.count(), 2);
    EXPECT_EQ(lead.count(), 0);

    // What was set out of range stays when something else changes.
    preferences.setTitleWidth(100);
    preferences.setLeadMinutes(3);
    fixture.store.setValue(settingsKey::joinHotKey, QJsonValue::Undefined);
    Q_EMIT fixture.store.changedExternally();
    EXPECT_THAT(told(preferences), HasSubstr(R"(100,3,"topRight",false,"none")"));
    EXPECT_EQ(shortcut.count(), 3);
}

TEST(Preferences, loginItemFollowsTheStandardStoreAloneAndItsFailuresAreLogged)
{
    Fixture standard({}, Kind::standard);
    QSignalSpy changed(&standard.preferences, &Preferences::launchAtLoginChanged);
    for (const bool wanted : {false, true, true, false})
        standard.preferences.setLaunchAtLogin(wanted);
    EXPECT_THAT(standard.loginItem.requests, ElementsAre(true, false));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_THAT(standard.store.values(), IsEmpty());
    standard.loginItem.error = QStringLiteral("the folder is\nread-only");
    testing::internal::CaptureStderr();
    standard.preferences.setLaunchAtLogin(true);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Mivora: launch at login change failed: the folder is read-only\n");
    EXPECT_TRUE(standard.preferences.launchAtLogin()) << "the new value is kept";
    standard.loginItem.enabled = true;
    EXPECT_TRUE(Preferences(standard.store, standard.loginItem).launchAtLogin());

    Fixture preview;
    preview.preferences.setLaunchAtLogin(true);
    EXPECT_THAT(preview.loginItem.requests, IsEmpty());
    preview.loginItem.enabled = true;
    EXPECT_FALSE(Preferences(preview.store, preview.loginItem).launchAtLogin());
}
