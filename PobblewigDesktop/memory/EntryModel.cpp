#include "PobblewigDesktop/memory/EntryModel.h"

namespace pobblewig {

void EntryModel::setEntries(size_t count, MakeRow make)
{
    beginResetModel();
    m_count = count;
    m_make = std::move(make);
    endResetModel();
}

int EntryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_count);
}

QVariant EntryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return m_make(size_t(index.row())).text;
    case detailRole:
        return m_make(size_t(index.row())).detail;
    case Qt::AccessibleTextRole: {
        const auto row = m_make(size_t(index.row()));
        return QStringLiteral("%1\n%2").arg(row.text, row.detail);
    }
    default:
        return {};
    }
}

} // namespace pobblewig
