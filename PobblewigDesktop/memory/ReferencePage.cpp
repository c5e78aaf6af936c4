#include "PobblewigDesktop/memory/ReferencePage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/memory/MemoryTexts.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeView>

#include <algorithm>

namespace pobblewig {

namespace {

/// The path of a section, or the id of an item.
constexpr int keyRole = EntryModel::detailRole + 1;

QString key(const ReferenceItem& item)
{
    return item.id.toString();
}

QStandardItem* row(const QString& text, const QString& detail, const QString& key)
{
    auto* const row = new QStandardItem(text);
    row->setData(detail, EntryModel::detailRole);
    row->setData(key, keyRole);
    row->setData(QStringLiteral("%1\n%2").arg(text, detail), Qt::AccessibleTextRole);
    row->setEditable(false);
    return row;
}

} // namespace

ReferencePage::ReferencePage(AppCoordinator& coordinator, const Calendar& calendar)
    : EntryPage({ .title = tr("Reference"),
        .explanation = tr("Facts in sections, such as people and deadlines. The model sees the "
                          "table of contents and opens a section when it needs it."),
        .empty = tr("Sections with facts appear here as you talk about courses, people and "
                    "plans."),
        .search = tr("Search facts"),
        .text = tr("Fact") })
    , m_coordinator(coordinator)
    , m_calendar(calendar)
    , m_tree(new QStandardItemModel(this))
    , m_reject(&addButton(tr("Reject")))
    , m_confirm(&addButton(tr("Confirm")))
    , m_delete(&addButton(tr("Delete")))
{
    PanelStyle::setRole(*m_confirm, QStringLiteral("primary"));
    setModel(*m_tree);
    view().setRootIsDecorated(true);
    connect(&view(), &QTreeView::expanded, this,
        [this](const auto& index) { m_open.insert(index.data(keyRole).toString()); });
    connect(&view(), &QTreeView::collapsed, this,
        [this](const auto& index) { m_open.erase(index.data(keyRole).toString()); });
    connect(m_confirm, &QPushButton::clicked, this, &ReferencePage::confirm);
    connect(m_reject, &QPushButton::clicked, this, &ReferencePage::reject);
    connect(m_delete, &QPushButton::clicked, this, &ReferencePage::remove);
}

void ReferencePage::list()
{
    const auto& reference = m_coordinator.memory().reference;
    m_nodes = ReferenceLogic::tree(reference.allSections(), reference.allItems(), wanted());
    showTree();
    setEmpty(m_nodes.empty(), isNarrowed());
}

void ReferencePage::showTree()
{
    const auto shown = m_shown;
    const QSignalBlocker quietView(&view());
    const QSignalBlocker quiet(view().selectionModel());
    m_tree->clear();
    std::vector<QStandardItem*> rows;
    for (const auto& node : m_nodes) {
        rows.push_back(sectionRow(node));
        (node.parent ? rows[*node.parent] : m_tree->invisibleRootItem())->appendRow(rows.back());
        for (const auto& item : node.items)
            rows.back()->appendRow(itemRow(item));
    }
    for (auto* const row : rows)
        view().setExpanded(
            row->index(), isNarrowed() || m_open.contains(row->data(keyRole).toString()));
    const auto found = m_tree->match(
        m_tree->index(0, 0), keyRole, shown, 1, Qt::MatchExactly | Qt::MatchRecursive);
    view().setCurrentIndex(found.isEmpty() ? m_tree->index(0, 0) : found.front());
    showSelected();
}

void ReferencePage::showSelected()
{
    const auto [node, item] = selected();
    m_shown = item ? key(*item) : node ? node->section.path : QString();
    const auto isProposed = node && !node->section.confirmed;
    m_confirm->setVisible(isProposed);
    m_reject->setVisible(isProposed);
    m_delete->setVisible(item);
    if (item)
        showItem(*item);
    else if (node)
        showSection(node->section);
}

void ReferencePage::showItem(const ReferenceItem& item)
{
    QStringList lines { item.summary };
    for (const auto& [name, value] : item.details)
        lines.append(QStringLiteral("%1: %2").arg(name, value.displayString()));
    text().setPlainText(lines.join(u'\n'));
    setFacts(tr("Noted on %1, last changed on %2. Source: %3.")
                 .arg(MemoryTexts::day(item.createdAt, m_calendar),
                     MemoryTexts::day(item.updatedAt, m_calendar), item.source));
}

void ReferencePage::showSection(const ReferenceSectionMeta& section)
{
    text().setPlainText(section.summary);
    setFacts(section.confirmed
            ? section.path
            : tr("Pobblewig proposes this section (%1). Nothing is kept in it until you confirm.")
                  .arg(section.path));
}

QStandardItem* ReferencePage::sectionRow(const ReferenceNode& node) const
{
    const auto count = m_coordinator.memory().reference.countItems(node.section.path);
    const auto entries = count == 1 ? tr("1 entry") : tr("%1 entries").arg(count);
    return row(
        node.section.title, node.section.confirmed ? entries : tr("Proposed"), node.section.path);
}

QStandardItem* ReferencePage::itemRow(const ReferenceItem& item) const
{
    return row(item.title, item.summary, key(item));
}

void ReferencePage::confirm()
{
    const auto path = selected().node->section.path;
    m_coordinator.memoryDesk().confirmSection(path);
}

void ReferencePage::reject()
{
    const auto before = selected().node->section;
    auto& desk = m_coordinator.memoryDesk();
    desk.rejectSection(before.path);
    Q_EMIT undoOffered(
        tr("%1 is rejected.").arg(before.title), [&desk, before] { desk.putBack(before); });
}

void ReferencePage::remove()
{
    const auto before = *selected().item;
    auto& desk = m_coordinator.memoryDesk();
    desk.deleteReferenceItem(before.id);
    Q_EMIT undoOffered(tr("The fact is deleted."), [&desk, before] { desk.putBack(before); });
}

ReferencePage::Entry ReferencePage::selected() const
{
    const auto shown = view().currentIndex().data(keyRole).toString();
    for (const auto& node : m_nodes) {
        if (node.section.path == shown)
            return { .node = &node };
        for (const auto& item : node.items) {
            if (key(item) == shown)
                return { .item = &item };
        }
    }
    return {};
}

} // namespace pobblewig
