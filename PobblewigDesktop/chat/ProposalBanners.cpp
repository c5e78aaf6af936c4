#include "PobblewigDesktop/chat/ProposalBanners.h"

#include "PobblewigDesktop/chat/ProposalBanner.h"
#include "PobblewigDesktop/chat/ProposalFold.h"
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

BannerQuestion questionOf(const RuleProposal& proposal)
{
    return { .id = proposal.proposalId,
        .name = ProposalBanners::tr("Proposal: %1").arg(ProposalTexts::name(proposal)),
        .confirm = ProposalBanners::tr("Confirm"),
        .dismiss = ProposalBanners::tr("Dismiss"),
        .allowAlways = ProposalTexts::allowAlways(proposal) };
}

BannerQuestion captureQuestion()
{
    return { .id = ProposalBanners::captureId.toString(),
        .name = ProposalBanners::tr("May the assistant look at your screen?"),
        .confirm = ProposalBanners::tr("Look now"),
        .dismiss = ProposalBanners::tr("Not now"),
        .allowAlways = ProposalBanners::tr("Allow until I quit") };
}

ProposalWords captureWords()
{
    return { ProposalBanners::tr("Look at your screen"),
        { ProposalBanners::tr("May the assistant look at your screen?"),
            ProposalBanners::tr(
                "It asks for one picture of the window that you work with. The picture goes "
                "to the model's server and is not kept.") } };
}

} // namespace

ProposalBanners::ProposalBanners(QWidget& panel)
    : QScrollArea(&panel)
    , m_fold(new ProposalFold(&panel))
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
    connect(m_fold, &ProposalFold::toggled, this, &ProposalBanners::toggleFold);
    connect(m_fold, &ProposalFold::dismissAllRequested, this, &ProposalBanners::dismissAll);

    m_slide.setDuration(slideMilliseconds);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_slide, &QPropertyAnimation::finished, this, &ProposalBanners::arrive);
    connect(&m_settling, &QTimer::timeout, this, &ProposalBanners::settle);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ProposalBanners::showNewest);
}

void ProposalBanners::addTo(QVBoxLayout& column)
{
    column.addWidget(m_fold);
    column.addWidget(this);
}

int ProposalBanners::heightForWidth(int width) const
{
    return std::min(m_layout->totalHeightForWidth(width), room());
}

int ProposalBanners::room() const
{
    return window()->height() * 2 / 5;
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
    remove([&proposals](const ProposalBanner& banner) {
        return banner.id() != captureId
            && std::ranges::find(proposals, banner.id(), &RuleProposal::proposalId)
            == proposals.end();
    });
    const auto height = shownHeight();
    auto hasNew = false;
    for (const auto& proposal : proposals)
        hasNew |= show(questionOf(proposal), ProposalTexts::words(proposal, settings, calendar));
    showAll(height, hasNew);
}

void ProposalBanners::setCaptureQuestion(bool isAsked)
{
    if (!isAsked)
        remove([](const ProposalBanner& banner) { return banner.id() == captureId; });
    const auto height = shownHeight();
    const auto isNew = isAsked && show(captureQuestion(), captureWords());
    showAll(height, isNew);
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
    if (watched == parent() && event->type() == QEvent::Resize) {
        for (auto* const banner : m_banners)
            banner->setRoom(room());
        updateGeometry();
    }
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

ProposalBanner* ProposalBanners::banner(QStringView id) const
{
    const auto found = std::ranges::find(m_banners, id, &ProposalBanner::id);
    return found == m_banners.end() ? nullptr : *found;
}

void ProposalBanners::remove(const Unwanted& isUnwanted)
{
    const auto gone = std::ranges::stable_partition(
        m_banners, [&](const ProposalBanner* banner) { return !isUnwanted(*banner); });
    for (auto* const banner : gone) {
        banner->giveUpFocus();
        banner->hide();
        // It may be on the stack: an answer can take effect at once.
        banner->deleteLater();
        hold();
    }
    m_banners.erase(gone.begin(), gone.end());
}

bool ProposalBanners::show(const BannerQuestion& question, const ProposalWords& words)
{
    auto* const known = banner(question.id);
    auto* const shown = known ? known : add(question);
    if (words != shown->words()) {
        shown->setWords(words);
        hold();
    }
    return !known;
}

void ProposalBanners::showAll(int heightBefore, bool hasNew)
{
    fold();
    if (hasNew)
        slideFrom(heightBefore);
}

void ProposalBanners::fold()
{
    const auto proposals = proposalBanners();
    if (proposals.size() < 2)
        m_isUnfolded = false;
    const auto isFolded = proposals.size() > 1 && !m_isUnfolded;
    for (auto* const banner : proposals)
        banner->setVisible(!isFolded);
    m_fold->setCount(int(proposals.size()));
    m_fold->setFolded(isFolded);
    setVisible(m_banners.size() > (isFolded ? proposals.size() : 0));
}

void ProposalBanners::toggleFold()
{
    m_isUnfolded = !m_isUnfolded;
    // Whoever wants to see them reads from the first on.
    m_isArriving = false;
    // The layout moves them only later.
    hold();
    fold();
    verticalScrollBar()->setValue(0);
}

void ProposalBanners::dismissAll()
{
    std::vector<QString> ids;
    for (const auto* const banner : proposalBanners())
        ids.push_back(banner->id());
    Q_EMIT focusGivenUp();
    for (const auto& id : ids)
        Q_EMIT answered(id, ProposalAnswer::dismiss);
}

std::vector<ProposalBanner*> ProposalBanners::proposalBanners() const
{
    std::vector<ProposalBanner*> proposals;
    std::ranges::copy_if(m_banners, std::back_inserter(proposals),
        [](const ProposalBanner* banner) { return banner->id() != captureId; });
    return proposals;
}

bool ProposalBanners::isBusy() const
{
    return underMouse() || m_column->isAncestorOf(window()->focusWidget());
}

ProposalBanner* ProposalBanners::add(const BannerQuestion& question)
{
    auto* const banner = new ProposalBanner(question, m_column);
    banner->setTheme(m_palette);
    banner->setRoom(room());
    m_layout->addWidget(banner);
    connect(banner, &ProposalBanner::answered, this, &ProposalBanners::answered);
    connect(banner, &ProposalBanner::focusGivenUp, this, &ProposalBanners::focusGivenUp);
    for (auto* const control : banner->controls())
        control->installEventFilter(this);
    orderControls(*banner);
    m_banners.push_back(banner);
    m_isArriving = !isBusy();
    // What the user is at does not go.
    m_isUnfolded |= isBusy();
    return banner;
}

void ProposalBanners::orderControls(const ProposalBanner& newest)
{
    QWidget* previous =
        m_banners.empty() ? m_fold->lastControl() : m_banners.back()->controls().back();
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
    if (!m_isArriving || m_banners.empty() || m_slide.state() == QPropertyAnimation::Running)
        return;
    // One that is too tall shows its beginning: nobody answers before the rest has been in sight.
    const auto needed = m_banners.back()->heightForWidth(viewport()->width());
    const auto hidden = std::max(0, needed - viewport()->height());
    verticalScrollBar()->setValue(verticalScrollBar()->maximum() - hidden);
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
    m_fold->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_settling.start();
}

void ProposalBanners::settle()
{
    m_column->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    m_fold->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    m_isArriving = false;
}

} // namespace pobblewig
