#pragma once

#include <QString>

namespace mivora {

/// The desktop's clipboard.
class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// Whether the desktop takes text from this program now.
    virtual bool isReachable() const = 0;

    /// Replaces the clipboard's content by the plain text `text`.
    virtual void setText(const QString &text) = 0;
};

} // namespace mivora
