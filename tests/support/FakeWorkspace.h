#pragma once

#include "Platform/Workspace.h"

#include <QSet>
#include <QStringList>

namespace mivora {

/// Opens nothing, but records what was to be opened. Answers through the event loop, as the real one does.
class FakeWorkspace final : public Workspace
{
public:
    void open(const QString &url, Opened done) override;
    bool hasHandler(const QString &scheme) const override;

    /// Every link handed over so far.
    QStringList opened;
    /// What open() answers.
    bool succeeds = true;
    /// The schemes that have a handler.
    QSet<QString> handlers;
    /// Every scheme asked for so far.
    mutable QStringList asked;
};

} // namespace mivora
