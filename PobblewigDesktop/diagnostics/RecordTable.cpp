#include "PobblewigDesktop/diagnostics/RecordTable.h"

#include <QHeaderView>
#include <QPainter>
#include <QStandardItemModel>

namespace pobblewig {

namespace {

constexpr int leastHeight = 260;

} // namespace

RecordTable::RecordTable(const QString& name, QStringList columns, const QString& empty)
    : m_columns(std::move(columns))
    , m_empty(empty)
    , m_rows(new QStandardItemModel(this))
{
    setModel(m_rows);
    setAccessibleName(name);
    setAccessibleDescription(empty);
    setMinimumHeight(leastHeight);
    verticalHeader()->hide();
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setShowGrid(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    m_rows->setHorizontalHeaderLabels(m_columns);
    horizontalHeader()->setStretchLastSection(true);
}

void RecordTable::setRows(std::vector<QStringList> rows)
{
    if (rows == m_shown)
        return;
    m_shown = std::move(rows);
    m_rows->clear();
    m_rows->setHorizontalHeaderLabels(m_columns);
    for (const auto& row : m_shown) {
        QList<QStandardItem*> items;
        for (const auto& text : row)
            items.append(new QStandardItem(text));
        m_rows->appendRow(items);
    }
    resizeColumnsToContents();
    setAccessibleDescription(m_shown.empty() ? m_empty : QString());
}

void RecordTable::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (!m_shown.empty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_empty);
}

} // namespace pobblewig
