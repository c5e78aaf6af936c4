#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace pobblewig {

namespace {

constexpr double lineSpacing = 1.15;
constexpr int usualCharacters = 40;

int bottom(const QTextLine& line)
{
    return static_cast<int>(std::ceil(line.y() + line.height()));
}

} // namespace

WrappedLabel::WrappedLabel(const QString& text, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

int WrappedLabel::lineCount() const
{
    return lines(width())->lineCount();
}

QSize WrappedLabel::sizeHint() const
{
    const auto width = usualCharacters * fontMetrics().averageCharWidth();
    return { width, heightForWidth(width) };
}

QSize WrappedLabel::minimumSizeHint() const
{
    return { fontMetrics().averageCharWidth(), fontMetrics().height() };
}

int WrappedLabel::heightForWidth(int width) const
{
    const auto layout = lines(width);
    const auto count = std::min(layout->lineCount(), m_mostLines);
    return count == 0 ? 0 : bottom(layout->lineAt(count - 1));
}

void WrappedLabel::setMostLines(int count)
{
    if (std::exchange(m_mostLines, count) == count)
        return;
    updateGeometry();
    update();
}

void WrappedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const auto layout = lines(width());
    const auto isCut = layout->lineCount() > m_mostLines;
    const auto whole = isCut ? m_mostLines - 1 : layout->lineCount();
    for (auto number = 0; number < whole; ++number)
        layout->lineAt(number).draw(&painter, {});
    if (!isCut)
        return;
    const auto last = layout->lineAt(whole);
    const auto rest = text().mid(last.textStart());
    const QRectF place(0, last.y(), width(), last.height());
    painter.setLayoutDirection(layout->textOption().textDirection());
    painter.drawText(place, Qt::AlignLeading | Qt::AlignTop | Qt::TextSingleLine,
        fontMetrics().elidedText(rest, Qt::ElideRight, width()));
}

void WrappedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    Q_EMIT wrapped();
}

std::unique_ptr<QTextLayout> WrappedLabel::lines(int width) const
{
    const auto isRightToLeft = text().isRightToLeft();
    QTextOption option(isRightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    auto layout = std::make_unique<QTextLayout>(text(), font());
    layout->setTextOption(option);
    layout->beginLayout();
    qreal top = 0;
    for (auto line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition({ 0, top });
        top += std::max(line.height(), std::ceil(fontMetrics().height() * lineSpacing));
    }
    layout->endLayout();
    return layout;
}

} // namespace pobblewig
