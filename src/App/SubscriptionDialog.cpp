#include "App/SubscriptionDialog.h"

#include "App/SubscriptionTexts.h"
#include "Calendar/CalendarSubscriptions.h"
#include "KeloTheme/ViewLoader.h"

#include <QCoreApplication>
#include <utility>

namespace mivora {

namespace {

constexpr int contentWidth = 460;

enum Column { id, name, host, state, color, columnCount };

/// What the command had to say, in the user's language; its logs come the same way.
QString complaintIn(const QByteArray &errors)
{
    const QByteArray mark("mivora: ");
    QString complaint = faultText(SubscriptionFault::storeSilent);
    for (const QByteArray &line : errors.split('\n'))
        if (line.startsWith(mark))
            complaint = QString::fromUtf8(line.mid(mark.size()));
    return complaint;
}

} // namespace

SubscriptionDialog::SubscriptionDialog(const QString &program, kelo::ViewLoader &views)
    : m_program(program), m_views(views),
      m_window(views, {.module = QStringLiteral("AppViews"),
                       .component = QStringLiteral("SubscriptionView"),
                       .properties = {{QStringLiteral("dialog"), QVariant::fromValue<QObject *>(this)}},
                       .size = {contentWidth, 1},
                       .growsWithText = false,
                       .title = QStringLiteral("Mivora")})
{
    connect(&m_window, &kelo::ViewWindow::closed, this, &SubscriptionDialog::abandon);
}

SubscriptionDialog::~SubscriptionDialog()
{
    abandon();
}

void SubscriptionDialog::ask(const QString &link)
{
    open({{}, {}, QString::fromStdString(hostOf(link.toStdString())), {}, {}}, link);
    if (!link.isEmpty() && m_calendar[host].isEmpty())
        fail(faultText(SubscriptionFault::noAddress));
}

void SubscriptionDialog::show(const CalendarInfo &calendar)
{
    open({QString::fromStdString(calendar.id), QString::fromStdString(calendar.title), {}, {}, {}}, {});
    if (calendar.color)
        m_calendar[color] = QString::fromStdString(calendar.color->hex());
    run({QStringLiteral("list"), m_calendar[id]}, {}, Then::stay);
}

void SubscriptionDialog::open(const QStringList &calendar, const QString &link)
{
    abandon();
    m_calendar = calendar;
    m_link = link;
    m_hasStore = true;
    m_isFault = false;
    if (!m_window.isVisible())
        m_height = 0;
    Q_EMIT changed();
    m_window.show();
}

void SubscriptionDialog::tellNoStore()
{
    m_hasStore = false;
    m_calendar[state] = faultText(SubscriptionFault::noStore);
    Q_EMIT changed();
}

QVariantMap SubscriptionDialog::page() const
{
    const bool isSubscribed = !m_calendar[id].isEmpty();
    const bool isLink = !m_link.isEmpty();
    const bool hasHost = !m_calendar[host].isEmpty();
    const bool canSubscribe = !isSubscribed && m_hasStore && (!isLink || hasHost);
    QString explanation;
    if (isSubscribed && hasHost)
        explanation = tr("From %1").arg(m_calendar[host]);
    else if (canSubscribe && !isLink)
        explanation =
            tr("Paste the private address of the calendar, in iCalendar format. Your calendar "
               "service shows it in the calendar's settings. Your desktop's calendar store keeps it, "
               "and fetches the calendar every 15 minutes.");
    else if (canSubscribe)
        explanation = tr("A link offers you a calendar of %1. Your desktop's calendar store would fetch it "
                         "from there every 15 minutes.")
                          .arg(m_calendar[host]);
    return {{QStringLiteral("title"), isSubscribed ? m_calendar[name] : tr("Subscribe to a calendar")},
            {QStringLiteral("explanation"), explanation},
            {QStringLiteral("asksForAddress"), canSubscribe && !isLink},
            {QStringLiteral("canSubscribe"), canSubscribe},
            {QStringLiteral("isSubscribed"), isSubscribed},
            {QStringLiteral("isBusy"), m_process != nullptr},
            {QStringLiteral("name"), m_calendar[name]},
            {QStringLiteral("color"), m_calendar[color]},
            {QStringLiteral("state"), m_calendar[state]},
            {QStringLiteral("isFault"), m_isFault}};
}

void SubscriptionDialog::subscribe(const QString &address)
{
    run({QStringLiteral("add")}, m_link.isEmpty() ? address : m_link, Then::stay);
}

void SubscriptionDialog::finish(const QString &newName)
{
    const QString wanted = newName.simplified();
    if (wanted.isEmpty() || wanted == m_calendar[name])
        return cancel();
    run({QStringLiteral("rename"), m_calendar[id], QStringLiteral("--"), wanted}, {}, Then::close);
}

void SubscriptionDialog::remove()
{
    run({QStringLiteral("remove"), m_calendar[id]}, {}, Then::close);
}

void SubscriptionDialog::cancel()
{
    abandon();
    m_window.close();
}

void SubscriptionDialog::setHeight(int height)
{
    m_height = std::max(m_height, height);
    m_window.setSize({m_views.scaled({contentWidth, 0}).width(), m_height});
}

void SubscriptionDialog::run(const QStringList &arguments, const QString &input, Then then)
{
    abandon();
    m_calendar[state].clear();
    m_isFault = false;
    m_process = new QProcess(QCoreApplication::instance());
    connect(m_process, &QProcess::finished, this, [this, then] { take(then); });
    connect(m_process, &QProcess::errorOccurred, this, [this, then](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            take(then);
    });
    m_process->start(m_program, QStringList(QStringLiteral("calendars")) + arguments);
    m_process->write(input.toUtf8() + '\n');
    m_process->closeWriteChannel();
    Q_EMIT changed();
}

void SubscriptionDialog::take(Then then)
{
    QProcess *process = std::exchange(m_process, nullptr);
    process->deleteLater();
    const bool isDone = process->error() == QProcess::UnknownError && process->exitCode() == 0;
    const QStringList columns =
        QString::fromUtf8(process->readAllStandardOutput()).trimmed().split(QLatin1Char('\t'));
    if (!isDone)
        return fail(complaintIn(process->readAllStandardError()));
    if (then == Then::close)
        m_window.close();
    if (columns.size() == columnCount)
        m_calendar = columns;
    Q_EMIT changed();
}

void SubscriptionDialog::fail(const QString &reason)
{
    m_calendar[state] = reason;
    m_isFault = true;
    Q_EMIT changed();
}

void SubscriptionDialog::abandon()
{
    QProcess *process = std::exchange(m_process, nullptr);
    if (!process)
        return;
    process->disconnect(this);
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    connect(process, &QProcess::errorOccurred, process, &QObject::deleteLater);
    process->terminate();
}

} // namespace mivora
