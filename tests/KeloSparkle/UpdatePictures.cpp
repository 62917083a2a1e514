// Takes a picture of every page of the update window, as it is on this display: update-pictures FOLDER

#include "KeloSparkle/UpdateWindow.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "Translations/InstallTranslations.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>

namespace {

using namespace kelo;

struct Picture
{
    const char *name;
    UpdatePage page;
};

std::vector<Picture> pictures()
{
    const ProgramName program{QStringLiteral("Mivora"), QStringLiteral("0.1.0")};
    Update update{
        .version = QStringLiteral("1.2"), .displayVersion = QStringLiteral("1.2"), .length = 4'830'000};
    update.notes = QStringLiteral("• The countdown no longer jumps when the clock is set.\n"
                                  "• Join links of two more services are found.\n"
                                  "• <b>Markup</b> is shown as it is written.\n\n")
                       .repeated(4);
    Update longNamed = update;
    longNamed.displayVersion = QString(40, QLatin1Char('7'));
    longNamed.notes = QString(20'000, QLatin1Char('\n')) + QString(400, QLatin1Char('w'));
    return {
        {"not-configured", notConfiguredPage(program)},
        {"checking", checkingPage()},
        {"up-to-date", noUpdatePage(program, {})},
        {"needs-newer-system",
         noUpdatePage(program, {.newest = {}, .needsNewerSystem = QStringLiteral("2.0")})},
        {"available", updatePage(program, update)},
        {"downloading", downloadingPage(program, update, 3'100'000)},
        {"verifying", downloadingPage(program, update, update.length)},
        {"ready", readyPage(program, update)},
        {"lying", lyingPage(QStringLiteral("/home/kim/.cache/mivora/updates/mivora_1.2_amd64.deb"))},
        {"lying-deep",
         lyingPage(QStringLiteral("/home/kim") + QStringLiteral("/a-folder-with-a-long-name").repeated(10))},
        {"older", failurePage(program, {UpdateFault::olderVersion, {}}, UpdateStep::download)},
        {"unreachable", failurePage(program, {UpdateFault::unreachable, {}}, UpdateStep::check)},
        {"untrusted", failurePage(program, {UpdateFault::untrustedServer, {}}, UpdateStep::download)},
        {"refused", failurePage(program, {UpdateFault::wrongSignature, {}}, UpdateStep::download)},
        {"gone", failurePage(program, {UpdateFault::vanished, {}}, UpdateStep::download)},
        {"long-name", updatePage(program, longNamed)},
    };
}

void wait(int milliseconds)
{
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < milliseconds;)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    mivora::installTranslations();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QDBusConnection noBus(QStringLiteral("none"));
    Appearance appearance(noBus);
    ViewLoader views(appearance);
    bool isSaved = true;
    for (const Picture &picture : pictures()) {
        UpdateWindow window(views, noBus, QStringLiteral("Mivora"));
        window.show(picture.page, Attention::taken);
        wait(500);
        const QRect area = window.window() ? window.window()->frameGeometry() : QRect();
        const QPixmap pixels =
            app.primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height());
        const QString file = app.arguments().value(1) + QLatin1Char('/') + QLatin1String(picture.name);
        isSaved = pixels.save(file + QStringLiteral(".png")) && isSaved;
    }
    return isSaved ? 0 : 1;
}
