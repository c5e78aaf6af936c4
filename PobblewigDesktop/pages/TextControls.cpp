#include "PobblewigDesktop/pages/TextControls.h"

#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr int mostRows = 6;
constexpr int gap = 8;

} // namespace

TextControl::TextControl(const TextSetting& kind)
    : m_kind(kind)
    , m_text(new QLineEdit(this))
{
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_text);
    connect(m_text, &QLineEdit::editingFinished, this, [this] {
        if (m_text->text().trimmed() != m_shown)
            Q_EMIT changed(m_text->text().trimmed());
    });
}

void TextControl::show(const AppSettings& settings)
{
    // What the user is about to write stays.
    if (std::exchange(m_shown, settings.*m_kind.field) != settings.*m_kind.field)
        m_text->setText(m_shown);
}

QWidget& TextControl::field()
{
    return *m_text;
}

ListControl::ListControl(const ListSetting& kind)
    : m_kind(kind)
    , m_list(new QListWidget(this))
    , m_new(new QLineEdit(this))
    , m_remove(new QPushButton(tr("Remove"), this))
{
    auto* const addButton = new QPushButton(tr("Add"), this);
    addButton->setAutoDefault(false);
    m_remove->setAutoDefault(false);
    m_remove->setEnabled(false);
    PanelStyle::setRole(*m_list, QStringLiteral("list"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_new->setAccessibleName(tr("Another entry"));
    auto* const line = new QHBoxLayout;
    line->setSpacing(gap);
    line->addWidget(m_new, 1);
    line->addWidget(addButton);
    line->addWidget(m_remove);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(m_list);
    column->addLayout(line);
    connect(addButton, &QPushButton::clicked, this, &ListControl::add);
    connect(m_new, &QLineEdit::returnPressed, this, &ListControl::add);
    connect(m_remove, &QPushButton::clicked, this, &ListControl::removeSelected);
    connect(m_list, &QListWidget::itemSelectionChanged, this,
        [this] { m_remove->setEnabled(!m_list->selectedItems().isEmpty()); });
}

void ListControl::show(const AppSettings& settings)
{
    const auto entries = m_kind.entries(settings);
    if (std::exchange(m_entries, entries) == entries && m_list->count() == entries.size())
        return;
    m_list->clear();
    m_list->addItems(entries);
    fitHeight();
}

QWidget& ListControl::field()
{
    return *m_list;
}

void ListControl::add()
{
    const auto entry = m_new->text().trimmed();
    if (entry.isEmpty() || m_entries.contains(entry))
        return;
    propose(m_entries + QStringList(entry));
    m_new->clear();
}

void ListControl::removeSelected()
{
    auto left = m_entries;
    for (const auto* const item : m_list->selectedItems())
        left.removeOne(item->text());
    propose(left);
}

void ListControl::propose(const QStringList& entries)
{
    JSONValue::Array values(entries.begin(), entries.end());
    Q_EMIT changed(values);
}

void ListControl::fitHeight()
{
    const auto rows = std::clamp(m_list->count(), 1, mostRows);
    const auto row = m_list->count() > 0 ? m_list->sizeHintForRow(0) : fontMetrics().height();
    m_list->setFixedHeight(rows * row + 2 * m_list->frameWidth() + gap);
}

} // namespace pobblewig
