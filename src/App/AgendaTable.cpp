#include "App/AgendaTable.h"

#include "App/commands/Output.h"
#include "App/commands/Rfc3339.h"
#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"
#include "Meetings/Color.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QLocale>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <sys/ioctl.h>
#include <unistd.h>

namespace mivora {

namespace {

/// The context of the texts for translators.
struct Agenda
{
    Q_DECLARE_TR_FUNCTIONS(Agenda)
};

/// One meeting, ready to be laid out.
struct Row
{
    QString id;
    QString time;
    QString title;
    QString note;
    QString colour;
};

/// Builds the lines; knows nothing of what they mean.
class TableWriter
{
public:
    explicit TableWriter(const TableStyle &style) : m_style(style) {}

    void heading(const QString &text) { m_text += styled(QStringLiteral("1"), text) + QLatin1Char('\n'); }

    void line(const QString &text) { m_text += text + QLatin1Char('\n'); }

    void rows(const QList<Row> &rows, const QString &nextID);

    std::string text() const { return m_text.toStdString(); }

private:
    QString styled(const QString &code, const QString &text) const;
    QString swatch(const QString &hex) const;

    TableStyle m_style;
    QString m_text;
};

/// The columns that a terminal draws `text` in. Qt has seen to a locale of UTF-8.
int columns(const QString &text)
{
    int width = 0;
    for (const char32_t c : text.toUcs4())
        width += std::max(0, wcwidth(wchar_t(c)));
    return width;
}

QString shortened(const QString &text, int width)
{
    if (width <= 0 || columns(text) <= width)
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (qsizetype next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary()) {
        if (columns(text.left(next)) > width - 1)
            break;
        end = next;
    }
    return text.left(end).trimmed() + QStringLiteral("…");
}

QString padded(const QString &text, int width)
{
    return text + QString(std::max(0, width - columns(text)), QLatin1Char(' '));
}

int widest(const QList<Row> &rows, QString Row::*column)
{
    int width = 0;
    for (const Row &row : rows)
        width = std::max(width, columns(row.*column));
    return width;
}

void TableWriter::rows(const QList<Row> &rows, const QString &nextID)
{
    const int timeWidth = widest(rows, &Row::time);
    const int noteWidth = widest(rows, &Row::note);
    const int limit = m_style.width > 0 ? std::max(10, m_style.width - timeWidth - noteWidth - 8) : 60;
    const int titleWidth = std::min(limit, widest(rows, &Row::title));
    // The same meeting in two calendars has one id: one row is marked all the same.
    const auto next =
        std::ranges::find_if(rows, [&](const Row &row) { return !nextID.isEmpty() && row.id == nextID; });
    for (const Row &row : rows) {
        const bool isNext = next != rows.end() && &row == &*next;
        const QString title = padded(shortened(row.title, titleWidth), row.note.isEmpty() ? 0 : titleWidth);
        QString text = (isNext ? QStringLiteral("→ ") : QStringLiteral("  ")) + padded(row.time, timeWidth) +
                       QStringLiteral("  ") + swatch(row.colour) +
                       styled(isNext ? QStringLiteral("1") : QString(), title);
        if (!row.note.isEmpty())
            text += QStringLiteral("  ") + styled(QStringLiteral("2"), row.note);
        line(text);
    }
}

QString TableWriter::styled(const QString &code, const QString &text) const
{
    if (!m_style.colours || code.isEmpty())
        return text;
    return QStringLiteral("\033[%1m%2\033[0m").arg(code, text);
}

QString TableWriter::swatch(const QString &hex) const
{
    if (!m_style.colours)
        return {};
    const auto colour = Color::fromHex(hex.toStdString());
    if (!colour)
        return QStringLiteral("  ");
    return styled(QStringLiteral("38;2;%1;%2;%3").arg(colour->red).arg(colour->green).arg(colour->blue),
                  QStringLiteral("▍")) +
           QLatin1Char(' ');
}

QString clock(const QJsonValue &time, const QTimeZone &zone)
{
    const auto instant = timestampFromRfc3339(time.toString().toStdString());
    return instant ? shortTime(*instant, zone, QLocale::system()) : QString();
}

Row rowOf(const QJsonObject &meeting, const QTimeZone &zone)
{
    Row row;
    row.id = meeting.value(QLatin1String("id")).toString();
    row.time = clock(meeting.value(QLatin1String("start")), zone) + QStringLiteral(" – ") +
               clock(meeting.value(QLatin1String("end")), zone);
    row.title = titleText(meeting.value(QLatin1String("title")).toString().toStdString());
    row.colour = meeting.value(QLatin1String("calendarColor")).toString();
    const auto link = meeting.value(QLatin1String("joinLink")).toObject();
    if (const auto service =
            serviceFromRawValue(link.value(QLatin1String("service")).toString().toStdString()))
        row.note = serviceName(*service);
    return row;
}

QList<Row> rowsOf(const QJsonValue &meetings, const QTimeZone &zone)
{
    QList<Row> rows;
    for (const auto &meeting : meetings.toArray())
        rows.append(rowOf(meeting.toObject(), zone));
    return rows;
}

QString dayOf(const QJsonObject &agenda, const QTimeZone &zone)
{
    const auto now = timestampFromRfc3339(agenda.value(QLatin1String("now")).toString().toStdString());
    if (!now)
        return {};
    const auto date = QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(*now)), zone).date();
    return QLocale::system().toString(date, QLocale::LongFormat);
}

QString linkOfNext(const QJsonObject &agenda)
{
    for (const auto &meeting : agenda.value(QLatin1String("today")).toArray()) {
        if (meeting[QLatin1String("id")] == agenda.value(QLatin1String("next")))
            return meeting[QLatin1String("linkToOpen")].toString();
    }
    return {};
}

} // namespace

TableStyle TableStyle::forStandardOutput()
{
    TableStyle style;
    if (!isatty(STDOUT_FILENO))
        return style;
    const char *noColour = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    style.colours = (!noColour || !*noColour) && terminal && std::string_view(terminal) != "dumb";
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0)
        style.width = size.ws_col;
    return style;
}

std::string agendaTable(const QJsonObject &agenda, const QTimeZone &zone, const TableStyle &style)
{
    TableWriter writer(style);
    const QString nextID = agenda.value(QLatin1String("next")).toString();
    const auto today = rowsOf(agenda.value(QLatin1String("today")), zone);
    const auto tomorrow = rowsOf(agenda.value(QLatin1String("tomorrow")), zone);

    writer.heading(dayOf(agenda, zone));
    if (today.isEmpty())
        writer.line(QStringLiteral("  ") + Agenda::tr("No more meetings today"));
    writer.rows(today, nextID);
    if (!tomorrow.isEmpty()) {
        writer.heading(Agenda::tr("Tomorrow"));
        writer.rows(tomorrow, {});
    }
    const QString title =
        agenda.value(QLatin1String("statusItem")).toObject().value(QLatin1String("title")).toString();
    if (!title.isEmpty()) {
        const QString link = linkOfNext(agenda);
        writer.line(QString());
        writer.line(Agenda::tr("Next: %1").arg(singleLine(title).trimmed()));
        if (!link.isEmpty())
            writer.line(Agenda::tr("Join: %1").arg(link));
    }
    return writer.text();
}

} // namespace mivora
