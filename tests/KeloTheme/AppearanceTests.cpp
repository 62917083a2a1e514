#include "KeloTheme/Appearance.h"

#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

namespace {

const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString scheme = QStringLiteral("color-scheme");
const QString accent = QStringLiteral("accent-color");

QVariant rgb(double red, double green, double blue)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

} // namespace

TEST(Appearance, followsTheDesktopsPortalOnceThereIsOne)
{
    support::PrivateBus bus;
    Appearance appearance(bus.connection());
    QSignalSpy changes(&appearance, &Appearance::changed);
    EXPECT_FALSE(appearance.isDark());
    support::FakePortal portal(bus.connection());
    portal.settings = {
        {appearanceGroup, {{scheme, 1U}, {accent, rgb(0.5, 0, 0.25)}}},
        {QStringLiteral("org.gnome.desktop.interface"), {{QStringLiteral("text-scaling-factor"), 3.0}}}};
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.isDark(); }));
    EXPECT_EQ(appearance.colors().accent.name(), QLatin1String("#800040"));
    EXPECT_EQ(appearance.textScale(), 2) << "no more than views have room for";
    const QString interface = QStringLiteral("org.gnome.desktop.interface");
    portal.changeSetting(interface, QStringLiteral("text-scaling-factor"), 1.25);
    portal.changeSetting(interface, QStringLiteral("font-name"), QStringLiteral("Liberation Serif Bold 12"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.textScale() == 1.5; }))
        << "12 points are 1.2 of the usual";
    EXPECT_EQ(QGuiApplication::font().family(), QStringLiteral("Liberation Serif"));
    portal.changeSetting(interface, QStringLiteral("enable-animations"), false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.motion() == 0; }));
    portal.changeSetting(appearanceGroup, QStringLiteral("contrast"), 1U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.colors().label == QColor(Qt::white); }));
    portal.changeSetting(appearanceGroup, QStringLiteral("contrast"), 0U);

    portal.changeSetting(appearanceGroup, scheme, 2U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !appearance.isDark(); }));
    portal.changeSetting(appearanceGroup, scheme, 0U);
    portal.changeSetting(appearanceGroup, accent, rgb(0, 1, 1.01));
    const SystemColors plain = SystemColors::of(ColorScheme::light);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.colors() == plain; })) << "no colour is chosen";
    EXPECT_EQ(changes.count(), 8) << "no preference is light here, as it was";
}

} // namespace kelo
