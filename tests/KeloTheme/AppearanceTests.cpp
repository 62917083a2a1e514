#include "KeloTheme/Appearance.h"

#include "KeloTheme/PortalSettings.h"
#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

namespace {

using Groups = QMap<QString, QVariantMap>;

const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");

QVariant rgb(double red, double green, double blue)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

// The portal's side of the bus.
class FakePortal final : public QDBusVirtualObject
{
public:
    explicit FakePortal(const QDBusConnection &bus) : m_bus(bus)
    {
        m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), this);
        m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    ~FakePortal() override { m_bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop")); }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() != QLatin1String("ReadAll"))
            return false;
        connection.send(message.createReply(QVariant::fromValue(groups)));
        return true;
    }

    void change(const QString &key, const QVariant &value)
    {
        auto signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                 QStringLiteral("org.freedesktop.portal.Settings"),
                                                 QStringLiteral("SettingChanged"));
        signal << appearanceGroup << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

    Groups groups;

private:
    QDBusConnection m_bus;
};

} // namespace

TEST(Appearance, followsTheDesktopsPortalOnceThereIsOne)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    qDBusRegisterMetaType<Groups>();
    support::PrivateBus bus;
    Appearance appearance(bus.connection());
    QSignalSpy changes(&appearance, &Appearance::changed);
    EXPECT_FALSE(appearance.isDark());
    FakePortal portal(bus.connection());
    portal.groups = {
        {appearanceGroup,
         {{QStringLiteral("color-scheme"), 1U}, {QStringLiteral("accent-color"), rgb(0.5, 0, 0.25)}}},
        {QStringLiteral("org.gnome.desktop.interface"), {{QStringLiteral("text-scaling-factor"), 3.0}}}};
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.isDark(); }));
    EXPECT_EQ(appearance.colors().accent.name(), QLatin1String("#800040"));
    EXPECT_EQ(appearance.textScale(), 1.25) << "no more than views have room for";

    portal.change(QStringLiteral("color-scheme"), 2U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !appearance.isDark(); }));
    portal.change(QStringLiteral("color-scheme"), 0U);
    portal.change(QStringLiteral("accent-color"), rgb(-1, -1, -1));
    const SystemColors plain = SystemColors::of(ColorScheme::light);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.colors() == plain; }));
    EXPECT_EQ(changes.count(), 3) << "no preference is light here, as it was";
}

TEST(Appearance, isTheEnvironmentsBeforeAll)
{
    for (const char *scheme : {"dark", "light"}) {
        qputenv("MIVORA_APPEARANCE", scheme);
        EXPECT_EQ(Appearance(QDBusConnection(QStringLiteral("none"))).isDark(), *scheme == 'd');
    }
    qunsetenv("MIVORA_APPEARANCE");
}

} // namespace kelo
