#include "PobblewigDesktop/chat/ThinkingRow.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>

namespace pobblewig {

namespace {

constexpr int lineHeight = 28;
constexpr int textHeight = 140;
constexpr std::chrono::milliseconds betweenTexts(50);

} // namespace

ThinkingRow::ThinkingRow(const TurnWatch& watch, Clock clock, QWidget* parent)
    : QFrame(parent)
    , m_watch(watch)
    , m_clock(std::move(clock))
    , m_toggle(new QPushButton(this))
    , m_text(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("thinking"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    PanelStyle::setRole(*m_toggle, QStringLiteral("quiet"));
    m_toggle->setAutoDefault(true);
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setUndoRedoEnabled(false);
    m_text->setAccessibleName(tr("Thoughts"));
    m_text->hide();
    hide();
    m_eachSecond.setInterval(std::chrono::seconds(1));
    m_nextText.setSingleShot(true);
    m_nextText.setInterval(betweenTexts);
    connect(&m_eachSecond, &QTimer::timeout, this, &ThinkingRow::showWords);
    connect(&m_nextText, &QTimer::timeout, this, &ThinkingRow::showText);
    connect(&watch, &TurnWatch::thinkingChanged, this, &ThinkingRow::follow);
    connect(m_toggle, &QPushButton::clicked, this, &ThinkingRow::toggle);
    auto* const bar = m_text->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
        [this, bar] { m_followsEnd = bar->value() == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int end) {
        if (m_followsEnd)
            bar->setValue(end);
    });
    follow();
}

void ThinkingRow::setTheme(const Palette& palette)
{
    m_palette = palette;
    showChevron();
}

QSize ThinkingRow::sizeHint() const
{
    return { m_toggle->sizeHint().width(),
        m_text->isHidden() ? lineHeight : lineHeight + textHeight };
}

void ThinkingRow::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    place();
}

void ThinkingRow::follow()
{
    const auto& thinking = m_watch.thinking();
    if (thinking.isEmpty()) {
        m_eachSecond.stop();
        m_text->hide();
        m_shown.clear();
        m_text->clear();
        hide();
        return;
    }
    if (!thinking.since)
        m_eachSecond.stop();
    else if (!m_eachSecond.isActive())
        m_eachSecond.start();
    // A second is soon enough for a new number, but not for a new state.
    if (isHidden() || !thinking.since)
        showWords();
    if (isHidden())
        showChevron();
    show();
    if (!m_nextText.isActive())
        m_nextText.start();
}

void ThinkingRow::showWords()
{
    const auto words = WaitingLogic::words(m_watch.thinking(), m_clock());
    m_toggle->setText(words);
    m_toggle->setAccessibleName(words);
}

void ThinkingRow::showText()
{
    if (m_text->isHidden())
        return;
    const auto& text = m_watch.thinking().text;
    if (text.startsWith(m_shown)) {
        QTextCursor end(m_text->document());
        end.movePosition(QTextCursor::End);
        end.insertText(text.mid(m_shown.size()));
    } else {
        m_text->setPlainText(text);
    }
    m_shown = text;
}

void ThinkingRow::toggle()
{
    m_text->setVisible(m_text->isHidden());
    showChevron();
    showText();
    place();
    updateGeometry();
}

void ThinkingRow::showChevron()
{
    const auto name = m_text->isHidden() ? Icons::Name::chevronDown : Icons::Name::chevronUp;
    m_toggle->setIcon(Icons::icon(name, m_palette.muted, m_palette.muted));
}

void ThinkingRow::place()
{
    // Without a layout, so that the counting of seconds moves nothing.
    m_toggle->setGeometry(0, 0, width(), lineHeight);
    m_text->setGeometry(0, lineHeight, width(), height() - lineHeight);
}

} // namespace pobblewig
