#pragma once

#include "Platform/Pasteboard.h"

#include <QObject>

namespace mivora {

/// The clipboard of the X server or, in a Wayland session with wl-clipboard installed, of the compositor:
/// that does not let a program without a focused window set it through the toolkit. Needs a QGuiApplication.
class ClipboardPasteboard final : public QObject, public Pasteboard
{
    Q_OBJECT

public:
    /// Lets a wl-copy that was just started take its text over.
    ~ClipboardPasteboard() override;

    bool isReachable() const override;

    /// Returns at once; wl-copy works on beside the program.
    void setText(const QString &text) override;

private:
    void copyWith(const QString &wlCopy, const QString &text);
};

} // namespace mivora
