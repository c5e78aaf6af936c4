#include "PobblewigDesktop/controls/Switch.h"

#include <QPainter>
#include <QScopedValueRollback>

namespace pobblewig {

namespace {

constexpr QSize trackSize(36, 20);
constexpr int ring = 3;
constexpr qreal knobInset = 3;

} // namespace

Switch::Switch(QWidget* parent)
    : QCheckBox(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Assistive technology toggles without a click.
    connect(this, &QCheckBox::toggled, this, [this](bool isOn) {
        if (!m_isShowing)
            Q_EMIT switched(isOn);
    });
}

void Switch::setTheme(const Palette& palette)
{
    m_palette = palette;
    update();
}

void Switch::showOn(bool isOn)
{
    const QScopedValueRollback showing(m_isShowing, true);
    setChecked(isOn);
}

QSize Switch::sizeHint() const
{
    return trackSize + QSize(2 * ring, 2 * ring);
}

void Switch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto track = QRectF(QPointF(ring, ring), trackSize);
    if (hasFocus()) {
        painter.setPen(QPen(m_palette.accent, 1.5));
        const auto around = track.adjusted(-2, -2, 2, 2);
        painter.drawRoundedRect(around, around.height() / 2, around.height() / 2);
    }
    const auto ground = isChecked() ? m_palette.accent : m_palette.outline;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isEnabled() ? ground : m_palette.hairline);
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    const auto side = track.height() - 2 * knobInset;
    const auto isRight = isChecked() != (layoutDirection() == Qt::RightToLeft);
    const auto left = isRight ? track.right() - knobInset - side : track.left() + knobInset;
    painter.setBrush(m_palette.surface);
    painter.drawEllipse(QRectF(left, track.top() + knobInset, side, side));
}

bool Switch::hitButton(const QPoint& place) const
{
    return rect().contains(place);
}

} // namespace pobblewig
