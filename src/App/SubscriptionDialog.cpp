#include "App/SubscriptionDialog.h"

#include "App/SubscriptionTexts.h"
#include "Calendar/CalendarSubscriptions.h"
#include "KeloTheme/ViewLoader.h"

#include <utility>

namespace mivora {

namespace {

constexpr int contentWidth = 460;

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
    m_id.clear();
    m_name.clear();
    m_host = QString::fromStdString(hostOf(link.toStdString()));
    open(link);
    if (!link.isEmpty() && m_host.isEmpty())
        fail(faultText(SubscriptionFault::noAddress));
}

void SubscriptionDialog::show(const CalendarInfo &calendar)
{
    m_id = QString::fromStdString(calendar.id);
    m_name = QString::fromStdString(calendar.title);
    m_color = calendar.color ? QString::fromStdString(calendar.color->hex()) : QString();
    m_host.clear();
    open({});
    run({QStringLiteral("list"), m_id}, {}, Then::stay);
}

void SubscriptionDialog::open(const QString &link)
{
    abandon();
    m_link = link;
    m_hasStore = true;
    m_state.clear();
    m_isFault = false;
    if (!m_window.isVisible())
        m_height = 0;
    Q_EMIT changed();
    m_window.show();
}

void SubscriptionDialog::tellNoStore()
{
    m_hasStore = false;
    fail(faultText(SubscriptionFault::noStore));
}

QVariantMap SubscriptionDialog::page() const
{
    const bool isSubscribed = !m_id.isEmpty();
    const bool isLink = !m_link.isEmpty();
    QString explanation;
    if (isSubscribed)
        explanation = m_host.isEmpty() ? QString() : tr("From %1").arg(m_host);
    else if (!isLink)
        explanation =
            tr("Paste the private address of the calendar, in iCalendar format. Your calendar "
               "service shows it in the calendar's settings. Your desktop's calendar store keeps it, "
               "and fetches the calendar every 15 minutes.");
    else if (!m_host.isEmpty())
        explanation = tr("A link offers you a calendar of %1. Your desktop's calendar store would fetch it "
                         "from there every 15 minutes.")
                          .arg(m_host);
    const bool canSubscribe = !isSubscribed && m_hasStore && (!isLink || !m_host.isEmpty());
    return {{QStringLiteral("title"), isSubscribed ? m_name : tr("Subscribe to a calendar")},
            {QStringLiteral("explanation"), explanation},
            {QStringLiteral("asksForAddress"), canSubscribe && !isLink},
            {QStringLiteral("canSubscribe"), canSubscribe},
            {QStringLiteral("isSubscribed"), isSubscribed},
            {QStringLiteral("isBusy"), m_process != nullptr},
            {QStringLiteral("name"), m_name},
            {QStringLiteral("color"), m_color},
            {QStringLiteral("state"), m_state},
            {QStringLiteral("isFault"), m_isFault}};
}

void SubscriptionDialog::subscribe(const QString &address)
{
    run({QStringLiteral("add")}, m_link.isEmpty() ? address : m_link, Then::stay);
}

void SubscriptionDialog::finish(const QString &name)
{
    const QString wanted = name.simplified();
    if (wanted.isEmpty() || wanted == m_name)
        return cancel();
    run({QStringLiteral("rename"), m_id, QStringLiteral("--"), wanted}, {}, Then::close);
}

void SubscriptionDialog::remove()
{
    run({QStringLiteral("remove"), m_id}, {}, Then::close);
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
    m_state.clear();
    m_isFault = false;
    m_process = new QProcess;
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
    if (columns.size() == 5) {
        m_id = columns[0];
        m_name = columns[1];
        m_host = columns[2];
        m_state = columns[3];
        m_color = columns[4];
    }
    Q_EMIT changed();
}

void SubscriptionDialog::fail(const QString &state)
{
    m_state = state;
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
    process->terminate();
}

} // namespace mivora
