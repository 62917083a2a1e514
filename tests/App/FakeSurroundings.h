#pragma once

#include "App/AppDelegate.h"
#include "Platform/Activation.h"
#include "Platform/SystemEvents.h"
#include "support/FakeClock.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeLoginItem.h"

#include <QCoreApplication>
#include <QSet>

namespace mivora {

/// Opens nothing, but records what was to be opened. Answers through the event loop, as the real one does.
class FakeWorkspace final : public Workspace
{
public:
    void open(const QString &url, Opened done) override
    {
        opened.append(url);
        token = takeLaunchToken();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [done = std::move(done), result = succeeds] { done(result); },
            Qt::QueuedConnection);
    }

    bool hasHandler(const QString &scheme) const override { return handlers.contains(scheme); }

    bool leadsSomewhere(const QString &) const override { return true; }

    /// Every link handed over so far.
    QStringList opened;
    /// What the last one may come to the front with.
    QByteArray token;
    /// What open() answers.
    bool succeeds = true;
    /// The schemes that have a handler.
    QSet<QString> handlers;
};

/// A clipboard that keeps every text that it was given, the latest last.
class FakePasteboard final : public Pasteboard
{
public:
    bool isReachable() const override { return true; }

    void setText(const QString &text) override { texts.append(text); }

    QStringList texts;
};

/// The world that the application stands in, for a test: time passes and things happen when the test says so,
/// and what the application does to it is recorded.
struct FakeSurroundings
{
    /// An application in this world; settings and bus are the test's. Without a bus no tray shows it.
    AppParts parts(DefaultsStore &defaults, std::unique_ptr<EventKitSource> source,
                   const QDBusConnection &bus = QDBusConnection(QStringLiteral("none")))
    {
        return {workspace, pasteboard, loginItem, defaults,         systemEvents,
                hotKeys,   clock,      bus,       std::move(source)};
    }

    FakeLoginItem loginItem;
    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    SystemEvents systemEvents;
    kelo::FakeHotKeyService hotKeys;
    FakeClock clock;
};

} // namespace mivora
