#pragma once

#include "Meetings/Meeting.h"

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace mivora {

/// The panel's texts and colour for a meeting; all empty without one.
struct PanelText
{
    /// The meeting's title in one line, or what stands for it.
    QString title;
    /// "Starts in 5m", "Starting now" or "Started 3m ago".
    QString timeText;
    bool hasStarted = false;
    /// The service of the join link, such as "Zoom"; nothing without a link.
    std::optional<QString> serviceName;
    /// The calendar's colour; without one the view takes the desktop's accent colour.
    std::optional<Color> accentColor;

    friend bool operator==(const PanelText &, const PanelText &) = default;
};

/// The line that tells when a meeting starts or started. Coming minutes are rounded up and past ones down, so
/// that the line never promises more time than there is.
QString panelTimeText(Timestamp start, Timestamp now);

/// Discreet ones keep the title to themselves.
PanelText panelText(const std::optional<Meeting> &meeting, Timestamp now, bool isDiscreet = false);

/// The state of the Join panel that its view shows: a meeting, the time, and what is said about the two.
///
/// Only what is read otherwise than before is announced, so that a panel on which nothing changes is not
/// drawn again.
class JoinPanelModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString timeText READ timeText NOTIFY changed)
    Q_PROPERTY(bool hasStarted READ hasStarted NOTIFY changed)
    Q_PROPERTY(bool hasLink READ hasLink NOTIFY changed)
    Q_PROPERTY(QString serviceName READ serviceName NOTIFY changed)
    Q_PROPERTY(QString accentColor READ accentColor NOTIFY changed)

public:
    /// Has no meeting at first.
    explicit JoinPanelModel(Timestamp now);

    /// Calls the action if it is set.
    Q_INVOKABLE void join() const;
    Q_INVOKABLE void snooze() const;
    Q_INVOKABLE void dismiss() const;

    /// The meeting on show.
    const std::optional<Meeting> &meeting() const { return m_meeting; }

    void setMeeting(const std::optional<Meeting> &meeting);

    /// The time against which the time line is written.
    Timestamp now() const { return m_now; }

    void setNow(Timestamp now);

    /// Whether others may read what is shown: then it tells neither title nor link.
    bool isDiscreet() const { return m_isDiscreet; }

    void setDiscreet(bool isDiscreet);

    QString title() const { return m_text.title; }

    QString timeText() const { return m_text.timeText; }

    bool hasStarted() const { return m_text.hasStarted; }

    bool hasLink() const { return m_text.serviceName.has_value(); }

    /// Empty without a link.
    QString serviceName() const { return m_text.serviceName.value_or(QString()); }

    /// "#rrggbb"; empty when the desktop's accent colour is meant.
    QString accentColor() const;

    std::function<void()> onJoin;
    std::function<void()> onSnooze;
    std::function<void()> onDismiss;

Q_SIGNALS:
    /// One of the properties changed.
    void changed();

private:
    void updateText();

    std::optional<Meeting> m_meeting;
    Timestamp m_now{};
    bool m_isDiscreet = false;
    PanelText m_text;
};

} // namespace mivora
