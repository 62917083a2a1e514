// A window that stands for the user's terminal: writes the text of every key that it gets to its output, "+"
// when it gets the keyboard and "-" when it loses it. With the name of a screen it fills that. For each line
// of its input, an activation token, it asks to come to the front, as browsers do that are given a link.

#include <QGuiApplication>
#include <QKeyEvent>
#include <QRasterWindow>
#include <QScreen>
#include <QSocketNotifier>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

class KeyLog final : public QRasterWindow
{
    void keyPressEvent(QKeyEvent *event) override { std::cout << event->text().toStdString() << std::flush; }

    void focusInEvent(QFocusEvent *) override { std::cout << '+' << std::flush; }

    void focusOutEvent(QFocusEvent *) override { std::cout << '-' << std::flush; }
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    KeyLog window;
    for (const QScreen *screen : QGuiApplication::screens()) {
        if (argc > 1 && screen->name() == QLatin1String(argv[1]))
            window.setGeometry(screen->geometry());
    }
    argc > 1 ? window.showFullScreen() : window.showMaximized();
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, [&] {
        if (std::string token; !std::getline(std::cin, token))
            input.setEnabled(false);
        else if (qputenv("XDG_ACTIVATION_TOKEN", token.c_str()))
            window.requestActivate();
    });
    return QGuiApplication::exec();
}
