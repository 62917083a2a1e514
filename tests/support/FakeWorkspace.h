#pragma once

#include "Platform/Workspace.h"

#include <QCoreApplication>
#include <QSet>
#include <QStringList>

namespace mivora {

/// Opens nothing, but records what was to be opened. Answers through the event loop, as the real one does.
class FakeWorkspace final : public Workspace
{
public:
    void open(const QString &url, Opened done) override
    {
        opened.append(url);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [done = std::move(done), result = succeeds] { done(result); },
            Qt::QueuedConnection);
    }

    bool hasHandler(const QString &scheme) const override { return handlers.contains(scheme); }

    /// Every link handed over so far.
    QStringList opened;
    /// What open() answers.
    bool succeeds = true;
    /// The schemes that have a handler.
    QSet<QString> handlers;
};

} // namespace mivora
