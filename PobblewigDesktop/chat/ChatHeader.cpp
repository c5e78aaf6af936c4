#include "PobblewigDesktop/chat/ChatHeader.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelKeys.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/SteadyLabel.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

namespace pobblewig {

namespace {

constexpr int faceSide = 32;

QToolButton* headerButton(const QString& name, QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setIconSize({ 20, 20 });
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

ChatHeader::ChatHeader(QWidget* parent)
    : QFrame(parent)
    , m_face(new QLabel(this))
    , m_state(new SteadyLabel(this))
    , m_model(new QLabel(this))
    , m_comingUp(headerButton(tr("Coming up"), this))
    , m_newSession(headerButton(tr("New session"), this))
    , m_menu(headerButton(tr("Menu"), this))
{
    setObjectName(QStringLiteral("header"));
    auto* const name = new QLabel(QStringLiteral("Pobblewig"), this);
    PanelStyle::setRole(*name, QStringLiteral("title"));
    PanelStyle::setRole(m_state->label(), QStringLiteral("caption"));
    PanelStyle::setRole(*m_model, QStringLiteral("caption"));
    m_face->setFixedSize(faceSide, faceSide);
    m_face->hide();
    m_state->label().setAccessibleName(tr("State"));
    m_model->setAccessibleName(tr("Model"));
    m_model->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_model->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_model->setCursor(Qt::PointingHandCursor);
    m_model->installEventFilter(this);

    auto* const words = new QVBoxLayout;
    words->setSpacing(0);
    words->addWidget(name);
    words->addWidget(m_state);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(mirrored({ 16, 8, 8, 8 }, *this));
    row->setSpacing(8);
    row->addWidget(m_face);
    row->addLayout(words);
    row->addWidget(m_model, 1);
    row->addWidget(m_comingUp);
    row->addWidget(m_newSession);
    row->addWidget(m_menu);

    auto* const menu = new QMenu(this);
    m_find = menu->addAction(tr("Find…"), this, &ChatHeader::findRequested);
    m_find->setShortcut(PanelKeys::sequence(PanelKeys::Act::find));
    m_save = menu->addAction(tr("Save as text…"), this, &ChatHeader::saveRequested);
    m_save->setShortcut(PanelKeys::sequence(PanelKeys::Act::save));
    m_past = menu->addAction(tr("Past conversations…"), this, &ChatHeader::pastRequested);
    m_past->setShortcut(PanelKeys::sequence(PanelKeys::Act::pastConversations));
    m_restart = menu->addAction(tr("New session"), this, &ChatHeader::newSessionRequested);
    m_restart->setShortcut(PanelKeys::sequence(PanelKeys::Act::newSession));
    m_keys = menu->addAction(tr("Keyboard"), this, &ChatHeader::keysRequested);
    m_keys->setShortcut(PanelKeys::sequence(PanelKeys::Act::showKeys));
    menu->addSeparator();
    const auto addWindow = [&](const QString& name, const QString& link) {
        return menu->addAction(name, this, [this, link] { Q_EMIT linkRequested(link); });
    };
    m_comingUpAct = addWindow(tr("Coming up…"), QStringLiteral("pobblewig:coming-up"));
    m_comingUpAct->setShortcut(PanelKeys::sequence(PanelKeys::Act::comingUp));
    m_memory = addWindow(tr("Memory…"), QStringLiteral("pobblewig:memory"));
    m_activity = addWindow(tr("Activity…"), QStringLiteral("pobblewig:activity"));
    m_diagnostics = addWindow(tr("Diagnostics…"), QStringLiteral("pobblewig:diagnostics"));
    m_diagnostics->setShortcut(PanelKeys::sequence(PanelKeys::Act::diagnostics));
    m_settings = addWindow(tr("Settings…"), QStringLiteral("pobblewig:settings"));
    m_settings->setShortcut(PanelKeys::sequence(PanelKeys::Act::settings));
    m_menu->setMenu(menu);
    m_menu->setPopupMode(QToolButton::InstantPopup);
    addActions(menu->actions());
    connect(m_comingUp, &QToolButton::clicked, m_comingUpAct, &QAction::trigger);
    connect(m_newSession, &QToolButton::clicked, this, &ChatHeader::newSessionRequested);
}

void ChatHeader::setTheme(const Palette& palette)
{
    const auto icon = [&palette](Icons::Name name) {
        return Icons::icon(name, palette.text, palette.muted);
    };
    m_comingUp->setIcon(icon(Icons::Name::week));
    m_newSession->setIcon(icon(Icons::Name::newSession));
    m_menu->setIcon(icon(Icons::Name::menu));
    m_find->setIcon(icon(Icons::Name::find));
    m_save->setIcon(icon(Icons::Name::save));
    m_past->setIcon(icon(Icons::Name::clock));
    m_restart->setIcon(icon(Icons::Name::newSession));
    m_comingUpAct->setIcon(icon(Icons::Name::week));
    m_memory->setIcon(icon(Icons::Name::document));
    m_activity->setIcon(icon(Icons::Name::chart));
    m_diagnostics->setIcon(icon(Icons::Name::info));
    m_settings->setIcon(icon(Icons::Name::sliders));
}

void ChatHeader::setFace(const QIcon& face)
{
    m_face->setPixmap(face.pixmap(QSize(faceSide, faceSide), devicePixelRatioF()));
    m_face->setVisible(!face.isNull());
}

void ChatHeader::setState(const QString& text)
{
    m_state->setText(text);
    m_state->setVisible(!text.isEmpty());
}

void ChatHeader::setModelLabel(const QString& text)
{
    m_modelText = text;
    m_model->setToolTip(text);
    m_model->setAccessibleDescription(text);
    showModelLabel();
}

void ChatHeader::setNewSessionEnabled(bool isEnabled)
{
    m_newSession->setEnabled(isEnabled);
    m_restart->setEnabled(isEnabled);
}

bool ChatHeader::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        showModelLabel();
    if (event->type() == QEvent::MouseButtonRelease)
        Q_EMIT linkRequested(QStringLiteral("pobblewig:settings/models"));
    return QFrame::eventFilter(watched, event);
}

void ChatHeader::showModelLabel()
{
    m_model->setText(
        m_model->fontMetrics().elidedText(m_modelText, Qt::ElideMiddle, m_model->width()));
}

} // namespace pobblewig
