#include "PobblewigDesktop/activity/ChartPane.h"

#include "PobblewigDesktop/activity/Chart.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int gap = 8;
constexpr int mostRowsInSight = 10;

} // namespace

ChartPane::ChartPane(const QString& title)
    : m_asTable(new QPushButton(tr("As a table"), this))
    , m_chart(new Chart(title, this))
    , m_rows(new QStandardItemModel(this))
    , m_table(new QTableView(this))
    , m_summary(new QLabel(this))
    , m_marked(new QLabel(this))
{
    PanelStyle::setRole(*m_asTable, QStringLiteral("quiet"));
    m_asTable->setCheckable(true);
    m_asTable->setAutoDefault(false);
    m_asTable->setAccessibleDescription(title);
    m_table->setModel(m_rows);
    m_table->setAccessibleName(title);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    m_table->hide();
    PanelStyle::setRole(*m_summary, QStringLiteral("detail"));
    PanelStyle::setRole(*m_marked, QStringLiteral("caption"));
    arrange(title);
    connect(m_asTable, &QPushButton::toggled, this, &ChartPane::showAsTable);
    connect(m_chart, &Chart::marked, this,
        [this](const QString& words) { PanelStyle::setText(*m_marked, words); });
}

void ChartPane::setTheme(const Palette& palette)
{
    m_chart->setTheme(palette);
}

void ChartPane::setContents(ChartContents contents)
{
    PanelStyle::setText(*m_summary, contents.summary);
    if (contents.columns != m_columns || contents.rows != m_shownRows)
        fillTable(contents);
    m_chart->setValues(std::move(contents.values), contents.summary);
}

void ChartPane::arrange(const QString& title)
{
    auto* const heading = new QLabel(title, this);
    PanelStyle::setRole(*heading, QStringLiteral("heading"));
    auto* const top = new QHBoxLayout;
    top->addWidget(heading);
    top->addStretch(1);
    top->addWidget(m_asTable);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, gap, 0, gap);
    column->setSpacing(gap / 2);
    column->addLayout(top);
    column->addWidget(m_summary);
    column->addWidget(m_chart);
    column->addWidget(m_table);
    column->addWidget(m_marked);
}

void ChartPane::showAsTable(bool asTable)
{
    m_chart->setVisible(!asTable);
    m_marked->setVisible(!asTable);
    m_table->setVisible(asTable);
}

void ChartPane::fillTable(const ChartContents& contents)
{
    m_columns = contents.columns;
    m_shownRows = contents.rows;
    m_rows->clear();
    m_rows->setHorizontalHeaderLabels(contents.columns);
    for (const auto& row : contents.rows) {
        QList<QStandardItem*> items;
        for (const auto& text : row)
            items.append(new QStandardItem(text));
        m_rows->appendRow(items);
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);
    const auto rows = std::clamp(int(contents.rows.size()), 1, mostRowsInSight);
    m_table->setFixedHeight(m_table->horizontalHeader()->sizeHint().height()
        + rows * m_table->verticalHeader()->defaultSectionSize() + gap);
}

} // namespace pobblewig
