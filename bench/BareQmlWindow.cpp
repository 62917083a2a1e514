// The yardstick for windows: the least program that shows one small QML window with the software renderer.
// Prints the milliseconds from there being an application to the first frame, and the resident memory in
// kilobytes after it.

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

const QByteArray view = R"(
import QtQuick
Window {
    width: 380; height: 150; visible: true
    Text { anchors.centerIn: parent; text: "Design review"; font.pixelSize: 15 }
}
)";

long residentKilobytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QFile::ReadOnly))
        return 0;
    return statm.readAll().split(' ').value(1).toLong() * (sysconf(_SC_PAGESIZE) / 1024);
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QElapsedTimer timer;
    timer.start();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(view, QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto *window = qobject_cast<QQuickWindow *>(object.get());
    if (!window)
        return 1;
    QObject::connect(window, &QQuickWindow::frameSwapped, &app, &QGuiApplication::quit, Qt::QueuedConnection);
    QGuiApplication::exec();
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    std::printf("%.3f %ld\n", milliseconds, residentKilobytes());
    return 0;
}
