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

QString styled(const TableStyle &style, const char *code, const QString &text)
{
    return style.colours ? QStringLiteral("\033[%1m%2\033[0m").arg(QLatin1String(code), text) : text;
}

/// The calendar's colour, as wide for every row.
QString swatch(const TableStyle &style, const QString &hex)
{
    const auto colour = Color::fromHex(hex.toStdString());
    if (!style.colours || !colour)
        return style.colours ? QStringLiteral("  ") : QString();
    return QStringLiteral("\033[38;2;%1;%2;%3m▍\033[0m ")
        .arg(colour->red)
        .arg(colour->green)
        .arg(colour->blue);
}

/// A line for each meeting; `nextID` is that of the one to mark.
QString linesOf(const QList<Row> &rows, const QString &nextID, const TableStyle &style)
{
    const int timeWidth = widest(rows, &Row::time);
    const int noteWidth = widest(rows, &Row::note);
    const int limit = style.width > 0 ? std::max(10, style.width - timeWidth - noteWidth - 8) : 60;
    const int titleWidth = std::min(limit, widest(rows, &Row::title));
    // The same meeting in two calendars has one id: one row is marked all the same.
    const auto next =
        std::ranges::find_if(rows, [&](const Row &row) { return !nextID.isEmpty() && row.id == nextID; });
    QString text;
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const QString title = padded(shortened(row->title, titleWidth), row->note.isEmpty() ? 0 : titleWidth);
        text += (row == next ? QStringLiteral("→ ") : QStringLiteral("  ")) + padded(row->time, timeWidth) +
                QStringLiteral("  ") + swatch(style, row->colour) +
                (row == next ? styled(style, "1", title) : title) +
                (row->note.isEmpty() ? QString() : QStringLiteral("  ") + styled(style, "2", row->note)) +
                QLatin1Char('\n');
    }
    return text;
}

QString clock(const QJsonValue &time, const QTimeZone &zone)
{
    const auto instant = timestampFromRfc3339(time.toString().toStdString());
    return instant ? shortTime(*instant, zone, QLocale::system()) : QString();
}

/// Why the settings leave a meeting out.
QString textOfReason(const QString &reason)
{
    if (reason == QLatin1String("title"))
        return Agenda::tr("left out: its title");
    return reason == QLatin1String("unanswered") ? Agenda::tr("left out: not accepted")
                                                 : Agenda::tr("left out: nobody else");
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
    if (const QJsonValue reason = meeting.value(QLatin1String("leftOut")); reason.isString())
        row.note = textOfReason(reason.toString());
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
    return now ? QLocale::system().toString(localTime(*now, zone).date(), QLocale::LongFormat) : QString();
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

QString agendaTable(const QJsonObject &agenda, const QTimeZone &zone, const TableStyle &style)
{
    const auto today = rowsOf(agenda.value(QLatin1String("today")), zone);
    const auto tomorrow = rowsOf(agenda.value(QLatin1String("tomorrow")), zone);
    QString text = styled(style, "1", dayOf(agenda, zone)) + QLatin1Char('\n');
    if (today.isEmpty())
        text += QStringLiteral("  ") + Agenda::tr("No more meetings today") + QLatin1Char('\n');
    text += linesOf(today, agenda.value(QLatin1String("next")).toString(), style);
    if (!tomorrow.isEmpty())
        text += styled(style, "1", Agenda::tr("Tomorrow")) + QLatin1Char('\n') + linesOf(tomorrow, {}, style);
    const QString title =
        agenda.value(QLatin1String("statusItem")).toObject().value(QLatin1String("title")).toString();
    if (!title.isEmpty()) {
        const QString link = linkOfNext(agenda);
        text +=
            QLatin1Char('\n') + Agenda::tr("Next: %1").arg(singleLine(title).trimmed()) + QLatin1Char('\n');
        if (!link.isEmpty())
            text += Agenda::tr("Join: %1").arg(link) + QLatin1Char('\n');
    }
    return text;
}

} // namespace mivora
