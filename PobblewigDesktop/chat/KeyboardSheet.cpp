#include "PobblewigDesktop/chat/KeyboardSheet.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelKeys.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QToolButton>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int margin = 12;
constexpr int gap = 8;

} // namespace

KeyboardSheet::KeyboardSheet(QWidget& panel)
    : QFrame(&panel)
    , m_panel(panel)
    , m_close(new QToolButton(this))
    , m_rows(new QWidget(this))
{
    setObjectName(QStringLiteral("sheet"));
    setAccessibleName(tr("Keyboard"));
    auto* const title = new QLabel(tr("Keyboard"), this);
    PanelStyle::setRole(*title, QStringLiteral("title"));
    m_close->setAccessibleName(tr("Close the list of keys"));
    m_close->setToolTip(m_close->accessibleName());
    connect(m_close, &QToolButton::clicked, this, &KeyboardSheet::close);

    auto* const top = new QHBoxLayout;
    top->addWidget(title, 1);
    top->addWidget(m_close);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(mirrored({ margin, gap, gap, margin }, *this));
    column->addLayout(top);
    column->addWidget(list(), 1);
    panel.installEventFilter(this);
    hide();
}

void KeyboardSheet::setTheme(const Palette& palette)
{
    m_close->setIcon(Icons::icon(Icons::Name::close, palette.text, palette.muted));
}

void KeyboardSheet::open()
{
    if (isVisible())
        return;
    m_before = m_panel.focusWidget();
    cover();
    show();
    raise();
    m_close->setFocus(Qt::ShortcutFocusReason);
}

void KeyboardSheet::close()
{
    if (isHidden())
        return;
    hide();
    if (m_before)
        m_before->setFocus(Qt::OtherFocusReason);
}

bool KeyboardSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_panel && event->type() == QEvent::Resize && isVisible())
        cover();
    return QFrame::eventFilter(watched, event);
}

QWidget* KeyboardSheet::list()
{
    auto* const form = new QFormLayout(m_rows);
    form->setContentsMargins(mirrored({ 0, 0, gap, 0 }, *this));
    form->setHorizontalSpacing(2 * gap);
    form->setVerticalSpacing(gap);
    for (const auto& key : PanelKeys::all()) {
        auto* const name = new QLabel(key.sequence.toString(QKeySequence::NativeText), m_rows);
        PanelStyle::setRole(*name, QStringLiteral("detail"));
        form->addRow(name, new WrappedLabel(key.words, m_rows));
    }
    auto* const area = new QScrollArea(this);
    area->setAccessibleName(tr("Keys"));
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(m_rows);
    return area;
}

void KeyboardSheet::cover()
{
    auto place = m_panel.rect().adjusted(margin, margin, -margin, -margin);
    const auto title = m_close->sizeHint().height() + gap + 2 * margin;
    place.setHeight(std::min(place.height(), m_rows->sizeHint().height() + title));
    setGeometry(place);
}

} // namespace pobblewig
