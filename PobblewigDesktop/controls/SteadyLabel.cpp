#include "PobblewigDesktop/controls/SteadyLabel.h"

#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr int leastWidth = 40;

QString withWidestDigits(QString text)
{
    std::ranges::replace_if(
        text, [](QChar c) { return c.isDigit(); }, u'0');
    return text;
}

class ElidedLabel : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(rect(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
            fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
    }
};

} // namespace

SteadyLabel::SteadyLabel(QWidget* parent)
    : QWidget(parent)
    , m_label(new ElidedLabel(this))
{
    m_label->setTextFormat(Qt::PlainText);
}

void SteadyLabel::setText(const QString& text)
{
    if (text == m_label->text())
        return;
    PanelStyle::setText(*m_label, text);
    auto widest = withWidestDigits(text);
    if (std::exchange(m_widest, std::move(widest)) != m_widest)
        updateGeometry();
}

QSize SteadyLabel::sizeHint() const
{
    m_label->ensurePolished();
    const auto metrics = m_label->fontMetrics();
    return { metrics.horizontalAdvance(m_widest) + 1, metrics.height() };
}

QSize SteadyLabel::minimumSizeHint() const
{
    return { std::min(leastWidth, sizeHint().width()), sizeHint().height() };
}

void SteadyLabel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_label->setGeometry(rect());
}

void SteadyLabel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
}

} // namespace pobblewig
