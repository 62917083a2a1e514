#pragma once

#include "Meetings/CalendarInfo.h"

#include <QAbstractListModel>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace mivora {

/// The calendars of all accounts as rows of one list; each knows its place in its account.
class CalendarListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        /// The calendar's title.
        TitleRole = Qt::UserRole,
        /// "#rrggbb"; empty for a calendar without colour.
        ColorRole,
        /// Whether the calendar counts for meetings.
        IsOnRole,
        /// What stands above the account's calendars.
        AccountRole,
        IsFirstRole,
        IsLastRole,
        /// Whether Mivora itself subscribed to it.
        IsOwnRole,
    };

    /// `isOwn` is what IsOwnRole says; it may be empty.
    explicit CalendarListModel(std::function<bool(const std::string &id)> isOwn = {})
        : m_isOwn(std::move(isOwn))
    {
    }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Shows the calendars by account, sorted by its title (case-sensitive, the same in every locale), and in
    /// their order within it. Rows that stay keep their place on the screen.
    void setCalendars(const std::vector<CalendarInfo> &calendars);
    void setDisabled(const std::set<std::string> &ids);

    /// The first row from `from` on, and from the top again, whose title begins with `text` in either case;
    /// -1 when there is none.
    Q_INVOKABLE int find(const QString &text, int from) const;

    /// The calendar of the row; one without an identifier when there is no such row.
    CalendarInfo calendar(int row) const;

private:
    struct Row
    {
        CalendarInfo calendar;
        bool isFirst = false;
        bool isLast = false;

        friend bool operator==(const Row &, const Row &) = default;
    };

    static std::vector<Row> rowsOf(std::vector<CalendarInfo> calendars);
    void replace(std::size_t first, std::size_t removed, const std::vector<Row> &inserted);

    std::vector<Row> m_rows;
    std::set<std::string> m_disabled;
    std::function<bool(const std::string &id)> m_isOwn;
};

} // namespace mivora
