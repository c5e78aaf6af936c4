#include "PobblewigDesktop/activity/Chart.h"

#include "PobblewigDesktop/activity/ChartColors.h"
#include "PobblewigDesktop/controls/Mirroring.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int margin = 12;
constexpr double radius = 3;
constexpr double cardRadius = 10;

QRectF inner(const QRectF& box)
{
    // Neighbours are told apart by the surface between them.
    const auto space = box.width() > 4 && box.height() > 4 ? 0.5 : 0.0;
    return box.adjusted(space, space, -space, -space);
}

} // namespace

Chart::Chart(const QString& name, QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Chart::setTheme(const Palette& palette)
{
    m_palette = palette;
    update();
}

void Chart::setValues(ChartValues values, const QString& summary)
{
    const auto marked = m_marked;
    m_values = std::move(values);
    m_summary = summary;
    arrange();
    m_marked = none;
    mark(marked < int(m_picture.marks.size()) ? marked : none);
}

bool Chart::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto& help = static_cast<QHelpEvent&>(*event);
    const auto number = markAt(help.pos());
    if (number == none)
        QToolTip::hideText();
    else
        QToolTip::showText(help.globalPos(), m_picture.marks[size_t(number)].words, this);
    return true;
}

void Chart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hasFocus() ? m_palette.accent : m_palette.hairline, hasFocus() ? 2 : 1));
    painter.setBrush(m_palette.surface);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), cardRadius, cardRadius);
    painter.translate(margin, margin);
    for (const auto& area : m_picture.ground)
        painter.fillRect(area, m_palette.hairline);
    paintMarks(painter);
    paintLabels(painter);
}

void Chart::resizeEvent(QResizeEvent*)
{
    arrange();
}

void Chart::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        arrange();
}

void Chart::keyPressEvent(QKeyEvent* event)
{
    const auto last = int(m_picture.marks.size()) - 1;
    const auto isMirrored = layoutDirection() == Qt::RightToLeft;
    switch (event->key()) {
    case Qt::Key_Left:
        mark(std::clamp(m_marked + (isMirrored ? 1 : -1), 0, std::max(0, last)));
        break;
    case Qt::Key_Right:
        mark(std::clamp(m_marked + (isMirrored ? -1 : 1), 0, std::max(0, last)));
        break;
    case Qt::Key_Home:
        mark(0);
        break;
    case Qt::Key_End:
        mark(last);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Chart::mousePressEvent(QMouseEvent* event)
{
    mark(markAt(event->position()));
}

void Chart::arrange()
{
    m_picture =
        ChartLogic::layout(m_values, std::max(1, width() - 2 * margin), fontMetrics().height());
    if (layoutDirection() == Qt::RightToLeft)
        m_picture = ChartLogic::mirrored(std::move(m_picture));
    setFixedHeight(int(m_picture.size.height()) + 2 * margin);
    update();
}

void Chart::mark(int number)
{
    m_marked = number < int(m_picture.marks.size()) ? number : none;
    const auto words = m_marked == none ? QString() : m_picture.marks[size_t(m_marked)].words;
    setAccessibleDescription(words.isEmpty() ? m_summary : words);
    Q_EMIT marked(words);
    update();
}

int Chart::markAt(const QPointF& place) const
{
    const auto isThere = [&](const ChartMark& mark) {
        return mark.box.adjusted(-1, -1, 1, 1).contains(place - QPointF(margin, margin));
    };
    const auto found = std::ranges::find_if(m_picture.marks, isThere);
    return found == m_picture.marks.end() ? none : int(found - m_picture.marks.begin());
}

void Chart::paintMarks(QPainter& painter) const
{
    painter.setPen(Qt::NoPen);
    for (const auto& mark : m_picture.marks) {
        if (mark.color == ChartMark::noColor)
            continue;
        painter.setBrush(ChartColors::color(mark.color, m_palette.scheme));
        const auto box = inner(mark.box);
        const auto corner = std::min(radius, box.width() / 3);
        painter.drawRoundedRect(box, corner, corner);
    }
    if (m_marked == none)
        return;
    painter.setPen(QPen(m_palette.text, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(
        m_picture.marks[size_t(m_marked)].box.adjusted(-2, -2, 2, 2), radius, radius);
}

void Chart::paintLabels(QPainter& painter) const
{
    painter.setPen(m_palette.text);
    for (const auto& label : m_picture.labels) {
        const auto shown =
            fontMetrics().elidedText(label.text, Qt::ElideRight, int(label.box.width()) + 1);
        painter.drawText(label.box, int(label.alignment | Qt::AlignAbsolute), isolated(shown));
    }
}

} // namespace pobblewig
