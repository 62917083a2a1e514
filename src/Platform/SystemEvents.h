#pragma once

#include <QObject>

namespace mivora {

/// What the operating system tells about time and sleep.
class SystemEvents : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// The machine is awake again after sleep.
    void didWake();
    /// A new calendar day began, in the local time zone.
    void dayChanged();
    /// The local time zone is another one.
    void timeZoneChanged();
    /// The system clock was set; time did not just pass.
    void clockChanged();
};

} // namespace mivora
