#pragma once

#include "PobblewigDesktop/activity/ChartLogic.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QStringList>
#include <QWidget>

class QLabel;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace pobblewig {

class Chart;

/// The values of a chart, to look at and to read.
struct ChartContents {
    ChartValues values;
    /// One sentence.
    QString summary;
    QStringList columns;
    std::vector<QStringList> rows;
};

/// A chart below its heading, and the same as a table on demand.
class ChartPane : public QWidget {
    Q_OBJECT

public:
    explicit ChartPane(const QString& title);

    void setTheme(const Palette& palette);
    void setContents(ChartContents contents);

private:
    void arrange(const QString& title);
    void showAsTable(bool asTable);
    void fillTable(const ChartContents& contents);

    QPushButton* m_asTable;
    Chart* m_chart;
    QStandardItemModel* m_rows;
    QTableView* m_table;
    QLabel* m_summary;
    QLabel* m_marked;
    /// What the table shows: filled anew, it would lose its selection.
    QStringList m_columns;
    std::vector<QStringList> m_shownRows;
};

} // namespace pobblewig
