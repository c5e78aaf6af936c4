#pragma once

#include "connections/ComingUpEntry.h"
#include "foundation/Calendar.h"

#include <QAbstractListModel>

namespace pobblewig {

/// Headings with their entries below them, one after another. A row is worded when it is looked at.
class ComingUpModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// The text of a row is its heading or title.
    enum Role {
        isHeadingRole = Qt::UserRole,
        timeRole,
        detailRole,
        /// An `AccentChoice`.
        colorRole,
        isDoneRole,
        /// Empty if there is nothing to open.
        linkRole,
    };

    using QAbstractListModel::QAbstractListModel;

    using Sections = std::vector<ComingUpSection>;

    /// `today` is the day by which the headings are worded.
    void show(Sections sections, QDate today, const Calendar& calendar);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Row {
        size_t section;
        /// Null for a heading.
        const ComingUpEntry* entry;
    };

    QString text(const Row& row) const;
    QString time(const Row& row) const;
    QString spoken(const Row& row) const;
    QVariant ofEntry(const Row& row, int role) const;

    Sections m_sections;
    std::vector<Row> m_rows;
    QDate m_today;
    Calendar m_calendar;
};

} // namespace pobblewig
