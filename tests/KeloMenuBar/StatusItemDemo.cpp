// Shows a status item like that of a running program, to be looked at in a host, and prints what is chosen.
#include "KeloMenuBar/StatusItem.h"

#include <QGuiApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QGuiApplication::arguments();

    kelo::StatusItem item(QStringLiteral("app.kelo.Mivora"));
    item.setIcon(QStringLiteral("calendar.badge.clock"), QStringLiteral("Mivora"));
    item.setTitle(arguments.value(1));
    item.setCountdown(arguments.value(2));
    item.setUrgent(arguments.contains(QStringLiteral("urgent")));
    if (arguments.contains(QStringLiteral("denied")))
        item.setIcon(QStringLiteral("calendar.badge.exclamationmark"), QStringLiteral("Mivora"));

    int openings = 0;
    item.menuNeedsUpdate = [&](kelo::Menu &menu) {
        const auto add = [&](const QString &title, const QString &key = {}) -> kelo::ClosureMenuItem & {
            return menu.addItem(title, key, [title] { QTextStream(stdout) << title << Qt::endl; });
        };
        add(QStringLiteral("09:30  Design_review  · now  · Zoom"));
        add(QStringLiteral("11:00  週次ミーティング  · Meet"));
        add(QStringLiteral("12:00  Lunch")).isEnabled = false;
        add(QStringLiteral("Opening %1").arg(++openings));
        menu.addSeparator();
        add(QStringLiteral("Settings…"), QStringLiteral(","));
        menu.addSeparator();
        menu.addItem(QStringLiteral("Quit Mivora"), QStringLiteral("q"), &QCoreApplication::quit);
    };
    return QGuiApplication::exec();
}
