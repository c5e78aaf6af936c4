#include "PobblewigDesktop/pages/UndoBar.h"

#include "PobblewigDesktop/controls/Banner.h"

#include <utility>

namespace pobblewig {

UndoBar::UndoBar(QWidget* parent)
    : QWidget(parent)
    , m_banner(new Banner(Banner::Kind::notice, tr("Done"), tr("Undo"), this))
{
    m_banner->setAction(tr("Undo"), Icons::Name::undo);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_banner);
    m_timer.setSingleShot(true);
    m_timer.setInterval(time);
    connect(&m_timer, &QTimer::timeout, this, &UndoBar::end);
    connect(m_banner, &Banner::actionTriggered, this, &UndoBar::undo);
}

void UndoBar::setTheme(const Palette& palette)
{
    m_banner->setTheme(palette);
}

void UndoBar::offer(const QString& done, std::function<void()> undo)
{
    m_undo = std::move(undo);
    m_banner->setText(done);
    m_timer.start();
}

void UndoBar::undo()
{
    const auto undo = std::exchange(m_undo, nullptr);
    end();
    if (undo)
        undo();
}

void UndoBar::end()
{
    m_timer.stop();
    m_undo = nullptr;
    m_banner->setText({});
}

} // namespace pobblewig
