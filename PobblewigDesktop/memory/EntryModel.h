#pragma once

#include <QAbstractListModel>

#include <functional>

namespace pobblewig {

/// What a list shows of an entry: its words, and below them, muted, what is known of it.
struct EntryRow {
    QString text;
    QString detail;

    bool operator==(const EntryRow&) const = default;
};

/// The entries of a list, however many. A row is made when it is looked at.
class EntryModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { detailRole = Qt::UserRole };

    using MakeRow = std::function<EntryRow(size_t index)>;

    using QAbstractListModel::QAbstractListModel;

    void setEntries(size_t count, MakeRow make);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    size_t m_count = 0;
    MakeRow m_make;
};

} // namespace pobblewig
