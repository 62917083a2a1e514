// The yardstick for the tray: the least program on Qt Gui and D-Bus that registers a status item.

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>

namespace {

class Item final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ id CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString IconName READ icon CONSTANT)

public:
    QString category() const { return QStringLiteral("ApplicationStatus"); }

    QString id() const { return QStringLiteral("bare"); }

    QString status() const { return QStringLiteral("Active"); }

    QString icon() const { return QStringLiteral("x-office-calendar"); }
};

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication app(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    Item item;
    bus.registerObject(QStringLiteral("/StatusNotifierItem"), &item, QDBusConnection::ExportAllProperties);
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    auto call = QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << bus.baseService();
    bus.asyncCall(call);
    return QGuiApplication::exec();
}

#include "BareTrayItem.moc"
