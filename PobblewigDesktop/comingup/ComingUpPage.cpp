#include "PobblewigDesktop/comingup/ComingUpPage.h"

#include "PobblewigDesktop/comingup/ComingUpDelegate.h"
#include "PobblewigDesktop/comingup/ComingUpModel.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "connections/ComingUpLogic.h"

#include <QDesktopServices>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr int gap = 8;
constexpr int leastListHeight = 160;
/// Below a heading.
constexpr int firstEntry = 1;

} // namespace

ComingUpPage::ComingUpPage(const ReferenceMemoryStore& reference, Moment moment)
    : m_reference(reference)
    , m_moment(std::move(moment))
    , m_model(new ComingUpModel(this))
    , m_delegate(new ComingUpDelegate(this))
    , m_view(new QListView(this))
    , m_empty(new QWidget(this))
{
    m_view->setAccessibleName(tr("Coming up"));
    PanelStyle::setRole(*m_view, QStringLiteral("list"));
    m_view->setItemDelegate(m_delegate);
    m_view->setModel(m_model);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->setMinimumHeight(leastListHeight);
    arrange();
    connect(m_view, &QListView::clicked, this, &ComingUpPage::open);
    for (const auto key : { Qt::Key_Return, Qt::Key_Enter }) {
        auto* const keys = new QShortcut(key, m_view);
        keys->setContext(Qt::WidgetShortcut);
        connect(keys, &QShortcut::activated, this, [this] { open(m_view->currentIndex()); });
    }
    connect(&m_everyMinute, &QTimer::timeout, this, &ComingUpPage::list);
}

void ComingUpPage::showState(const PublishedState&)
{
    if (isVisible() && m_listed != m_reference.revision())
        list();
}

void ComingUpPage::setTheme(const Palette& palette)
{
    m_delegate->setTheme(palette);
    m_view->viewport()->update();
}

void ComingUpPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    list();
    m_everyMinute.start(1min);
}

void ComingUpPage::hideEvent(QHideEvent* event)
{
    Page::hideEvent(event);
    m_everyMinute.stop();
}

void ComingUpPage::arrange()
{
    auto* const title = new QLabel(tr("Coming up"), this);
    PanelStyle::setRole(*title, QStringLiteral("title"));
    auto* const words = new WrappedLabel(
        tr("Nothing is due in the next %1 days. Deadlines, events and reminders appear here once "
           "your school or a calendar is connected.")
            .arg(ComingUpLogic::upcomingDays));
    PanelStyle::setRole(*words, QStringLiteral("detail"));
    auto* const connections = new QPushButton(tr("Open connections"));
    connections->setAutoDefault(false);
    connect(connections, &QPushButton::clicked, this,
        [this] { Q_EMIT linkRequested(QStringLiteral("pobblewig:settings/connections")); });
    auto* const empty = new QVBoxLayout(m_empty);
    empty->setContentsMargins(0, 0, 0, 0);
    empty->setSpacing(gap);
    empty->addWidget(words);
    empty->addWidget(connections, 0, Qt::AlignLeading);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(title);
    column->addWidget(m_view, 1);
    column->addWidget(m_empty);
    // An empty list leaves its place to nothing, so the rest stays at the top.
    column->addStretch(0);
}

void ComingUpPage::list()
{
    const auto now = m_moment.now();
    const auto calendar = m_moment.calendar();
    const auto row = std::max(firstEntry, m_view->currentIndex().row());
    const auto place = m_view->verticalScrollBar()->value();
    m_listed = m_reference.revision();
    m_model->show(ComingUpLogic::sections(m_reference.allItems(), now, calendar), calendar.day(now),
        calendar);
    if (!m_view->currentIndex().isValid()) {
        m_view->setCurrentIndex(m_model->index(std::min(row, m_model->rowCount() - 1)));
        m_view->verticalScrollBar()->setValue(place);
    }
    const auto isEmpty = m_model->rowCount() == 0;
    m_view->setHidden(isEmpty);
    m_empty->setVisible(isEmpty);
}

void ComingUpPage::open(const QModelIndex& index)
{
    const auto link = index.data(ComingUpModel::linkRole).toUrl();
    if (!link.isEmpty())
        QDesktopServices::openUrl(link);
}

} // namespace pobblewig
