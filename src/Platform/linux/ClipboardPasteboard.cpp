#include "Platform/linux/ClipboardPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>

namespace mivora {

namespace {

/// Empty where it isn't needed, or isn't installed.
QString wlCopyProgram()
{
    const bool isWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return isWayland ? QStandardPaths::findExecutable(QStringLiteral("wl-copy")) : QString();
}

} // namespace

ClipboardPasteboard::~ClipboardPasteboard()
{
    constexpr int patience = 500;
    const auto running = findChildren<QProcess *>();
    for (QProcess *process : running) {
        process->disconnect(this);
        process->waitForFinished(patience);
    }
}

bool ClipboardPasteboard::isReachable() const
{
    return QGuiApplication::platformName() != QLatin1String("wayland") || QGuiApplication::focusWindow() ||
           !wlCopyProgram().isEmpty();
}

void ClipboardPasteboard::setText(const QString &text)
{
    const QString wlCopy = wlCopyProgram();
    if (wlCopy.isEmpty())
        QGuiApplication::clipboard()->setText(text);
    else
        copyWith(wlCopy, text);
}

void ClipboardPasteboard::copyWith(const QString &wlCopy, const QString &text)
{
    auto *process = new QProcess(this);
    // A part of wl-copy stays behind to serve the text; it must not hold pipes of ours open.
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    const auto end = [process, text](bool isCopied) {
        if (!isCopied)
            QGuiApplication::clipboard()->setText(text);
        process->deleteLater();
    };
    connect(process, &QProcess::finished, this, [end](int code, QProcess::ExitStatus status) {
        end(code == 0 && status == QProcess::NormalExit);
    });
    connect(process, &QProcess::errorOccurred, this, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(false);
    });
    process->start(wlCopy, {QStringLiteral("--type"), QStringLiteral("text/plain;charset=utf-8")});
    process->write(text.toUtf8());
    process->closeWriteChannel();
}

} // namespace mivora
