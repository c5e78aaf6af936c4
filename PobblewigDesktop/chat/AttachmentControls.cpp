#include "PobblewigDesktop/chat/AttachmentControls.h"

#include "PobblewigDesktop/chat/InputButton.h"
#include "PobblewigDesktop/chat/RegionTaking.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelKeys.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

namespace pobblewig {

namespace {

constexpr int openerWidth = 18;

} // namespace

AttachmentControls::AttachmentControls(ChatService& chat, QWidget* parent)
    : QWidget(parent)
    , m_attach(inputButton(tr("Attach…"), this))
    , m_screen(inputButton(tr("Look at my screen"), this))
    , m_more(inputButton(tr("More pictures of the screen"), this))
    , m_part(new QAction(tr("A part of the screen…"), this))
    , m_regions(new RegionTaking(chat, *this))
{
    auto* const menu = new QMenu(m_more);
    menu->addAction(m_part);
    m_more->setObjectName(QStringLiteral("opener"));
    m_more->setFixedWidth(openerWidth);
    m_more->setIconSize({ 12, 12 });
    m_more->setMenu(menu);
    m_more->setPopupMode(QToolButton::InstantPopup);
    m_part->setShortcut(PanelKeys::sequence(PanelKeys::Act::attachPart));
    addAction(m_part);

    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(m_attach);
    line->addWidget(m_screen);
    line->addWidget(m_more);

    auto* const key = new QShortcut(PanelKeys::sequence(PanelKeys::Act::attach), parent);
    connect(key, &QShortcut::activated, m_attach, &QToolButton::click);
    connect(m_attach, &QToolButton::clicked, this, &AttachmentControls::askForFiles);
    connect(m_screen, &QToolButton::clicked, this, &AttachmentControls::screenRequested);
    connect(m_part, &QAction::triggered, m_regions, &RegionTaking::begin);
    connect(m_regions, &RegionTaking::taken, this, &AttachmentControls::partTaken);
    connect(m_regions, &RegionTaking::refused, this, &AttachmentControls::refused);
}

void AttachmentControls::setTheme(const Palette& palette)
{
    m_attach->setIcon(Icons::icon(Icons::Name::attach, palette.text, palette.muted));
    m_more->setIcon(Icons::icon(Icons::Name::chevronDown, palette.text, palette.muted));
    m_screen->setIcon(Icons::icon(Icons::Name::screen, palette.text, palette.muted));
    m_regions->setTheme(palette);
}

void AttachmentControls::setScreenEnabled(bool isEnabled)
{
    m_screen->setEnabled(isEnabled);
    m_more->setEnabled(isEnabled);
    m_part->setEnabled(isEnabled);
}

void AttachmentControls::askForFiles()
{
    auto* const dialog = new QFileDialog(this, tr("Attach files"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    // Windows do not inherit the colours of the one they belong to.
    dialog->setPalette(palette());
    dialog->setDirectory(QDir::homePath());
    connect(dialog, &QFileDialog::urlsSelected, this, &AttachmentControls::filesChosen);
    dialog->open();
}

} // namespace pobblewig
