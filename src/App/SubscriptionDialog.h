#pragma once

#include "KeloTheme/ViewWindow.h"
#include "Meetings/CalendarInfo.h"

#include <QProcess>
#include <QVariantMap>

namespace kelo {
class ViewLoader;
}

namespace mivora {

/// The dialogue about one calendar of the net: subscribes to it, and shows how that went; renames and removes
/// one that is subscribed to. Main thread only.
///
/// The command `calendars` does the work, as a process of its own: one that hangs with the desktop's store,
/// or dies of it, takes nothing along, and that store's library can be used once in each process only.
/// Addresses go through a pipe, where no other user sees them.
class SubscriptionDialog final : public QObject
{
    Q_OBJECT
    /// title, explanation; asksForAddress; canSubscribe, isSubscribed, isBusy; name and color of the
    /// calendar; state, which is how it went, and isFault.
    Q_PROPERTY(QVariantMap page READ page NOTIFY changed)

public:
    /// `program` is what has the command. `views` outlives the dialogue; nothing is loaded before it is
    /// shown.
    SubscriptionDialog(const QString &program, kelo::ViewLoader &views);
    ~SubscriptionDialog() override;

    /// Asks for an address; or whether to subscribe to `link`, of which only the host is shown.
    void ask(const QString &link = {});

    /// Shows a calendar that is subscribed to, as it is known, and has it fetched.
    void show(const CalendarInfo &calendar);

    /// There is nothing that could subscribe.
    void tellNoStore();

    QVariantMap page() const;

    /// Tries the calendar at `address`, or else that of the link.
    Q_INVOKABLE void subscribe(const QString &address);

    /// Gives the calendar `newName`, and closes the dialogue.
    Q_INVOKABLE void finish(const QString &newName);

    Q_INVOKABLE void remove();

    /// Closes the dialogue; what is being tried is taken back.
    Q_INVOKABLE void cancel();

    /// The view has grown to this height.
    Q_INVOKABLE void setHeight(int height);

    /// Null while there is none.
    QWindow *window() const { return m_window.window(); }

Q_SIGNALS:
    void changed();

private:
    enum class Then { stay, close };

    void open(const QStringList &calendar, const QString &link);
    void run(const QStringList &arguments, const QString &input, Then then);
    void take(Then then);
    void fail(const QString &reason);
    void abandon();

    QString m_program;
    kelo::ViewLoader &m_views;
    QString m_link;
    /// What is known, in the columns that the command prints.
    QStringList m_calendar{{}, {}, {}, {}, {}};
    bool m_isFault = false;
    bool m_hasStore = true;
    int m_height = 0;
    /// Deletes itself with its end, which nobody waits for.
    QProcess *m_process = nullptr;
    kelo::ViewWindow m_window;
};

} // namespace mivora
