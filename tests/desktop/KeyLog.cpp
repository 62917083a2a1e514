// A window that stands for the user's terminal: writes the text of every key that it gets to its output, "+"
// when it gets the keyboard and "-" when it loses it. For each line of its input, an activation token, it
// asks to come to the front, as browsers do that have been given a link.

#include <QGuiApplication>
#include <QKeyEvent>
#include <QRasterWindow>
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
    window.showMaximized();
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, [&] {
        if (std::string token; !std::getline(std::cin, token))
            input.setEnabled(false);
        else if (qputenv("XDG_ACTIVATION_TOKEN", token.c_str()))
            window.requestActivate();
    });
    return QGuiApplication::exec();
}
