#pragma once

#include <QJsonObject>
#include <QTimeZone>

namespace mivora {

/// How the table may look.
struct TableStyle
{
    /// Colours and bold text by terminal control sequences (ECMA-48).
    bool colours = false;
    /// Columns of the terminal; titles are shortened to fit. 0 for no limit.
    int width = 0;

    /// What suits standard output: colours and a width on a terminal, unless NO_COLOR is set (no-color.org).
    static TableStyle forStandardOutput();
};

/// The agenda, given as the JSON object that `mivora agenda --json` prints, as a table for people.
QString agendaTable(const QJsonObject &agenda, const QTimeZone &zone, const TableStyle &style);

} // namespace mivora
