#include "PobblewigDesktop/comingup/ComingUpModel.h"

#include "PobblewigDesktop/comingup/ComingUpTexts.h"

namespace pobblewig {

void ComingUpModel::show(Sections sections, QDate today, const Calendar& calendar)
{
    if (sections == m_sections && today == m_today && calendar.locale == m_calendar.locale)
        return;
    beginResetModel();
    m_sections = std::move(sections);
    m_today = today;
    m_calendar = calendar;
    m_rows.clear();
    for (size_t number = 0; number < m_sections.size(); ++number) {
        m_rows.push_back({ number, nullptr });
        for (const auto& entry : m_sections[number].entries)
            m_rows.push_back({ number, &entry });
    }
    endResetModel();
}

int ComingUpModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ComingUpModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& row = m_rows[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return text(row);
    case Qt::AccessibleTextRole:
        return spoken(row);
    case isHeadingRole:
        return row.entry == nullptr;
    default:
        return row.entry ? ofEntry(row, role) : QVariant();
    }
}

Qt::ItemFlags ComingUpModel::flags(const QModelIndex& index) const
{
    const auto isHeading = data(index, isHeadingRole).toBool();
    return isHeading ? Qt::ItemNeverHasChildren
                     : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

QString ComingUpModel::text(const Row& row) const
{
    return row.entry ? row.entry->title
                     : ComingUpTexts::heading(m_sections[row.section], m_today, m_calendar.locale);
}

QString ComingUpModel::time(const Row& row) const
{
    return ComingUpTexts::time(*row.entry, m_sections[row.section].kind, m_today, m_calendar);
}

QString ComingUpModel::spoken(const Row& row) const
{
    QStringList parts { text(row) };
    if (row.entry)
        parts << time(row) << ComingUpTexts::detail(*row.entry, m_calendar.locale);
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QVariant ComingUpModel::ofEntry(const Row& row, int role) const
{
    const auto& entry = *row.entry;
    switch (role) {
    case timeRole:
        return time(row);
    case detailRole:
        return ComingUpTexts::detail(entry, m_calendar.locale);
    case colorRole:
        return int(entry.color);
    case isDoneRole:
        return entry.isDone();
    case linkRole:
        return entry.link;
    case Qt::ToolTipRole:
        return entry.link.isEmpty() ? QVariant() : tr("Opens %1").arg(entry.link.host());
    default:
        return {};
    }
}

} // namespace pobblewig
