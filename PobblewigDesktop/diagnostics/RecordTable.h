#pragma once

#include <QStringList>
#include <QTableView>

#include <vector>

class QStandardItemModel;

namespace pobblewig {

/// A table of texts, to be read and copied.
class RecordTable : public QTableView {
    Q_OBJECT

public:
    /// `empty` is said in place of rows.
    RecordTable(const QString& name, QStringList columns, const QString& empty);

    /// Rows that are shown already keep their selection.
    void setRows(std::vector<QStringList> rows);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList m_columns;
    QString m_empty;
    std::vector<QStringList> m_shown;
    QStandardItemModel* m_rows;
};

} // namespace pobblewig
