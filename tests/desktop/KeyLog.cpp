// A window that stands for the user's terminal: writes the text of every key that it gets to its output, "+"
// when it gets the keyboard and "-" when it loses it.

#include <QGuiApplication>
#include <QKeyEvent>
#include <QRasterWindow>
#include <iostream>

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
    return QGuiApplication::exec();
}
