#pragma once

#include "Meetings/Timestamp.h"

#include <QObject>
#include <functional>

namespace mivora {

class Scheduler;

/// The last step: the next meeting, as it is found while the step is on show.
class FirstMeetingModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool hasMeeting READ hasMeeting NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)
    Q_PROPERTY(QString color READ color NOTIFY changed)
    /// What to do about an icon that nothing shows; empty while something does.
    Q_PROPERTY(QString trayHint MEMBER trayHint NOTIFY trayHintChanged)

public:
    using TimeFormat = std::function<QString(Timestamp)>;

    /// `formatTime` writes the time of day. `scheduler` must outlive the model.
    FirstMeetingModel(const Scheduler &scheduler, TimeFormat formatTime);

    QString trayHint;

    bool hasMeeting() const;

    /// In one line; empty without a meeting.
    QString title() const;

    /// "9:30 · Zoom" or "9:30 · no link"; empty without a meeting.
    QString detail() const;

    /// The calendar's "#rrggbb"; empty when the desktop's accent colour is meant.
    QString color() const;

Q_SIGNALS:
    void changed();
    void trayHintChanged();

private:
    const Scheduler &m_scheduler;
    TimeFormat m_formatTime;
};

} // namespace mivora
