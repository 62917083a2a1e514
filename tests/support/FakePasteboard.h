#pragma once

#include "Platform/Pasteboard.h"

#include <QStringList>

namespace mivora {

/// A clipboard that keeps every text that it was given, the latest last.
class FakePasteboard final : public Pasteboard
{
public:
    void setText(const QString &text) override { texts.append(text); }

    QStringList texts;
};

} // namespace mivora
