// A tray applet as one writes it with Qt's own widgets: an icon and a menu.

#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QPixmap picture(22, 22);
    picture.fill(Qt::white);
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"), &application, &QCoreApplication::quit);
    QSystemTrayIcon item{QIcon(picture)};
    item.setContextMenu(&menu);
    item.show();
    return QApplication::exec();
}
