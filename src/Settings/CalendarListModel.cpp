#include "Settings/CalendarListModel.h"

#include "MeetingTexts/TitleText.h"

#include <algorithm>

namespace mivora {

int CalendarListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CalendarListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    switch (role) {
    case TitleRole:
        return titleText(row.calendar.title);
    case ColorRole:
        return row.calendar.color ? QString::fromStdString(row.calendar.color->hex()) : QString();
    case IsOnRole:
        return !m_disabled.contains(row.calendar.id);
    case AccountRole:
        return row.calendar.accountTitle.empty() ? tr("Calendars") : titleText(row.calendar.accountTitle);
    case IsFirstRole:
        return row.isFirst;
    case IsLastRole:
        return row.isLast;
    case IsOwnRole:
        return m_isOwn && m_isOwn(row.calendar.id);
    }
    return {};
}

QHash<int, QByteArray> CalendarListModel::roleNames() const
{
    return {{TitleRole, "title"},     {ColorRole, "calendarColor"}, {IsOnRole, "isOn"},
            {AccountRole, "account"}, {IsFirstRole, "isFirst"},     {IsLastRole, "isLast"},
            {IsOwnRole, "isOwn"}};
}

void CalendarListModel::setCalendars(const std::vector<CalendarInfo> &calendars)
{
    const std::vector<Row> rows = rowsOf(calendars);
    // All that differs lies between what both lists begin with and what both end with.
    const auto [oldFrom, newFrom] = std::ranges::mismatch(m_rows, rows);
    const auto isSame = std::mismatch(m_rows.rbegin(), std::make_reverse_iterator(oldFrom), rows.rbegin(),
                                      std::make_reverse_iterator(newFrom));
    const auto oldTo = isSame.first.base();
    const auto newTo = isSame.second.base();
    replace(std::size_t(oldFrom - m_rows.begin()), std::size_t(oldTo - oldFrom),
            std::vector<Row>(newFrom, newTo));
}

void CalendarListModel::setDisabled(const std::set<std::string> &ids)
{
    const std::set<std::string> before = std::exchange(m_disabled, ids);
    for (int row = 0; row < rowCount(); ++row) {
        const std::string &id = m_rows[std::size_t(row)].calendar.id;
        if (before.contains(id) != ids.contains(id))
            Q_EMIT dataChanged(index(row), index(row), {IsOnRole});
    }
}

int CalendarListModel::find(const QString &text, int from) const
{
    for (int i = 0; i < rowCount(); ++i) {
        const int row = (from + i) % rowCount();
        if (index(row).data(TitleRole).toString().startsWith(text, Qt::CaseInsensitive))
            return row;
    }
    return -1;
}

CalendarInfo CalendarListModel::calendar(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[std::size_t(row)].calendar : CalendarInfo();
}

std::vector<CalendarListModel::Row> CalendarListModel::rowsOf(std::vector<CalendarInfo> calendars)
{
    std::ranges::stable_sort(calendars, titleSortsBefore, &CalendarInfo::accountTitle);
    std::vector<Row> rows;
    for (CalendarInfo &calendar : calendars) {
        const bool isFirst = rows.empty() || rows.back().calendar.accountTitle != calendar.accountTitle;
        if (!isFirst)
            rows.back().isLast = false;
        rows.push_back({std::move(calendar), isFirst, true});
    }
    return rows;
}

void CalendarListModel::replace(std::size_t first, std::size_t removed, const std::vector<Row> &inserted)
{
    const int from = int(first);
    const auto begin = m_rows.begin() + from;
    if (removed > 0) {
        beginRemoveRows({}, from, from + int(removed) - 1);
        m_rows.erase(begin, begin + int(removed));
        endRemoveRows();
    }
    if (!inserted.empty()) {
        beginInsertRows({}, from, from + int(inserted.size()) - 1);
        m_rows.insert(m_rows.begin() + from, inserted.begin(), inserted.end());
        endInsertRows();
    }
}

} // namespace mivora
