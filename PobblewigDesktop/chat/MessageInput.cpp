#include "PobblewigDesktop/chat/MessageInput.h"

#include "PobblewigDesktop/controls/EmojiHighlighter.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

constexpr int mostLines = 6;
/// Border and padding, above and below.
constexpr int frame = 6;
constexpr int leastHeight = 36;

} // namespace

MessageInput::MessageInput(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setAccessibleName(tr("Message"));
    setTabChangesFocus(true);
    new EmojiHighlighter(document());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
        &MessageInput::fitHeight);
}

bool MessageInput::isBlank() const
{
    return toPlainText().trimmed().isEmpty();
}

void MessageInput::setTheme(const Palette& palette)
{
    m_hintColor = palette.muted;
    viewport()->update();
}

void MessageInput::keyPressEvent(QKeyEvent* event)
{
    const auto isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !(event->modifiers() & Qt::ShiftModifier))
        Q_EMIT submitted();
    else if (event->key() == Qt::Key_Up && document()->isEmpty())
        Q_EMIT recalled();
    else
        QPlainTextEdit::keyPressEvent(event);
}

void MessageInput::paintEvent(QPaintEvent* event)
{
    QPlainTextEdit::paintEvent(event);
    if (!document()->isEmpty())
        return;
    // A style sheet would show a placeholder text too faint to read.
    const auto margin = static_cast<int>(document()->documentMargin());
    QPainter painter(viewport());
    painter.setPen(m_hintColor);
    painter.drawText(viewport()->rect().adjusted(margin, margin, 0, 0),
        Qt::AlignLeft | Qt::AlignTop, tr("Write to Pobblewig"));
}

void MessageInput::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    fitHeight();
}

void MessageInput::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitHeight();
}

bool MessageInput::canInsertFromMimeData(const QMimeData* source) const
{
    return DropContents::isAttachable(*source) || QPlainTextEdit::canInsertFromMimeData(source);
}

void MessageInput::insertFromMimeData(const QMimeData* source)
{
    const auto contents = DropContents::of(*source);
    if (contents.isAttachable())
        Q_EMIT offered(contents);
    else
        QPlainTextEdit::insertFromMimeData(source);
}

void MessageInput::fitHeight()
{
    // A plain text document counts its height in lines.
    const auto lines = static_cast<int>(std::ceil(document()->size().height()));
    const auto margins = 2 * static_cast<int>(document()->documentMargin()) + frame;
    const auto height = std::clamp(lines, 1, mostLines) * fontMetrics().lineSpacing() + margins;
    setVerticalScrollBarPolicy(lines > mostLines ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setFixedHeight(std::max(leastHeight, height));
}

} // namespace pobblewig
