#include "PobblewigDesktop/chat/ProposalBanners.h"

#include "PobblewigDesktop/chat/ProposalBanner.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr int gap = 8;
constexpr int slideMilliseconds = 140;

/// Longer than it takes to notice that something else is under the pointer, and not to press.
constexpr auto settlingTime = 400ms;

} // namespace

ProposalBanners::ProposalBanners(QWidget& panel)
    : QScrollArea(&panel)
    , m_column(new QWidget)
    , m_layout(new QVBoxLayout(m_column))
    , m_slide(this, "maximumHeight")
{
    setAccessibleName(tr("Proposals"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QSizePolicy wraps(QSizePolicy::Preferred, QSizePolicy::Preferred);
    wraps.setHeightForWidth(true);
    setSizePolicy(wraps);
    setWidgetResizable(true);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(gap);
    // Never wider than what can be seen of it, so that its texts are wrapped.
    m_column->setMinimumWidth(1);
    setWidget(m_column);
    m_column->setAutoFillBackground(false);
    panel.installEventFilter(this);
    hide();

    m_slide.setDuration(slideMilliseconds);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_slide, &QPropertyAnimation::finished, this, &ProposalBanners::arrive);
    connect(&m_settling, &QTimer::timeout, this, &ProposalBanners::settle);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ProposalBanners::showNewest);
}

int ProposalBanners::heightForWidth(int width) const
{
    return std::min(m_layout->totalHeightForWidth(width), window()->height() * 2 / 5);
}

void ProposalBanners::setTheme(const Palette& palette)
{
    m_palette = palette;
    for (auto* const banner : m_banners)
        banner->setTheme(palette);
}

void ProposalBanners::setProposals(const std::vector<RuleProposal>& proposals,
    const AppSettings& settings, const Calendar& calendar)
{
    keepOnly(proposals);
    const auto height = isHidden() ? 0 : this->height();
    auto hasNew = false;
    for (const auto& proposal : proposals) {
        auto* shown = banner(proposal.proposalId);
        if (!shown) {
            hasNew = true;
            shown = add(proposal);
        }
        const auto words = ProposalTexts::words(proposal, settings, calendar);
        if (words != shown->words()) {
            shown->setWords(words);
            hold();
        }
    }
    setVisible(!m_banners.empty());
    if (hasNew)
        slideFrom(height);
}

void ProposalBanners::allowAnswer(const QString& proposalId)
{
    if (auto* const shown = banner(proposalId))
        shown->setAnswerable(true);
}

bool ProposalBanners::event(QEvent* event)
{
    const auto isHandled = QScrollArea::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        hold();
    }
    return isHandled;
}

bool ProposalBanners::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        updateGeometry();
    auto* const control = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::FocusIn && m_column->isAncestorOf(control))
        reveal(*control);
    // Nobody answers what cannot be read: such a press only brings it into sight.
    if (event->type() == QEvent::MouseButtonPress && qobject_cast<QPushButton*>(control))
        return reveal(*control);
    return QScrollArea::eventFilter(watched, event);
}

void ProposalBanners::moveEvent(QMoveEvent* event)
{
    QScrollArea::moveEvent(event);
    hold();
}

void ProposalBanners::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    hold();
}

void ProposalBanners::scrollContentsBy(int dx, int dy)
{
    QScrollArea::scrollContentsBy(dx, dy);
    hold();
}

ProposalBanner* ProposalBanners::banner(const QString& proposalId) const
{
    const auto found = std::ranges::find(m_banners, proposalId, &ProposalBanner::proposalId);
    return found == m_banners.end() ? nullptr : *found;
}

void ProposalBanners::keepOnly(const std::vector<RuleProposal>& proposals)
{
    const auto isIn = [&proposals](const ProposalBanner* banner) {
        return std::ranges::find(proposals, banner->proposalId(), &RuleProposal::proposalId)
            != proposals.end();
    };
    const auto gone = std::ranges::stable_partition(m_banners, isIn);
    for (auto* const banner : gone) {
        banner->giveUpFocus();
        banner->hide();
        // It may be on the stack: an answer can take effect at once.
        banner->deleteLater();
        hold();
    }
    m_banners.erase(gone.begin(), gone.end());
}

ProposalBanner* ProposalBanners::add(const RuleProposal& proposal)
{
    auto* const banner = new ProposalBanner(proposal, m_column);
    banner->setTheme(m_palette);
    m_layout->addWidget(banner);
    connect(banner, &ProposalBanner::answered, this, &ProposalBanners::answered);
    connect(banner, &ProposalBanner::focusGivenUp, this, &ProposalBanners::focusGivenUp);
    for (auto* const control : banner->controls())
        control->installEventFilter(this);
    orderControls(*banner);
    m_banners.push_back(banner);
    m_isArriving = !underMouse() && !m_column->isAncestorOf(window()->focusWidget());
    return banner;
}

void ProposalBanners::orderControls(const ProposalBanner& newest)
{
    QWidget* previous = m_banners.empty() ? this : m_banners.back()->controls().back();
    while (!(previous->focusPolicy() & Qt::TabFocus))
        previous = previous->previousInFocusChain();
    for (auto* const control : newest.controls())
        setTabOrder(std::exchange(previous, control), control);
}

void ProposalBanners::slideFrom(int height)
{
    if (!isVisible())
        return;
    m_slide.stop();
    setMaximumHeight(QWIDGETSIZE_MAX);
    parentWidget()->layout()->activate();
    const auto wanted = this->height();
    if (PanelStyle::isStill(*this) || wanted <= height)
        return;
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_slide.setStartValue(height);
    m_slide.setEndValue(wanted);
    m_slide.start();
}

void ProposalBanners::arrive()
{
    setMaximumHeight(QWIDGETSIZE_MAX);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    showNewest();
}

void ProposalBanners::showNewest()
{
    if (m_isArriving && m_slide.state() != QPropertyAnimation::Running)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

bool ProposalBanners::reveal(QWidget& control)
{
    const auto before = verticalScrollBar()->value();
    auto* const banner = control.parentWidget();
    ensureWidgetVisible(banner->height() > viewport()->height() ? &control : banner, 0, 0);
    return verticalScrollBar()->value() != before;
}

void ProposalBanners::hold()
{
    m_column->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_settling.start();
}

void ProposalBanners::settle()
{
    m_column->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    m_isArriving = false;
}

} // namespace pobblewig
