#include "PobblewigDesktop/settings/GeneralPage.h"

#include "PobblewigDesktop/controls/Switch.h"
#include "PobblewigDesktop/pages/FieldRow.h"

#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QSignalBlocker>

namespace pobblewig {

GeneralPage::GeneralPage(
    const Settings& settings, AppCoordinator& coordinator, const Desktop& desktop)
    : CatalogPage(SettingCatalog::title(SettingsPage::general), settings, coordinator)
    , m_desktop(desktop)
{
    if (desktop.autostart)
        addAutostart();
    if (desktop.hotKey)
        addHotKey();
}

void GeneralPage::showState(const PublishedState& state)
{
    CatalogPage::showState(state);
    if (m_startsAtLogin)
        m_startsAtLogin->showOn(m_desktop.autostart->isEnabled());
}

void GeneralPage::setTheme(const Palette& palette)
{
    CatalogPage::setTheme(palette);
    if (m_startsAtLogin)
        m_startsAtLogin->setTheme(palette);
}

void GeneralPage::addAutostart()
{
    m_startsAtLogin = new Switch;
    m_autostart = new FieldRow({ tr("Start at login") }, *m_startsAtLogin);
    connect(m_startsAtLogin, &Switch::switched, this, &GeneralPage::startAtLogin);
    add(*m_autostart);
}

void GeneralPage::addHotKey()
{
    m_keys = new QKeySequenceEdit;
    m_keys->setClearButtonEnabled(true);
    m_keyRow = new FieldRow({ tr("Keys that call the chat"),
                                tr("They work in every application. Press them in the field.") },
        *m_keys);
    // The field inside of it is what has the focus.
    m_keys->findChild<QLineEdit*>()->setAccessibleName(m_keys->accessibleName());
    showKeys();
    connect(m_keys, &QKeySequenceEdit::editingFinished, this, &GeneralPage::changeKeys);
    connect(m_desktop.hotKey, &ChatHotKey::changed, this, &GeneralPage::showKeys);
    connect(m_desktop.hotKey, &ChatHotKey::notChanged, this, [this](const HotKeyError& error) {
        showKeys();
        m_keyRow->setProblem(error.description());
    });
    add(*m_keyRow);
}

void GeneralPage::startAtLogin(bool isWanted)
{
    const auto outcome = m_desktop.autostart->setEnabled(isWanted);
    m_startsAtLogin->showOn(m_desktop.autostart->isEnabled());
    m_autostart->setProblem(outcome
            ? QString()
            : tr("This could not be changed: %1").arg(outcome.error().description()));
}

void GeneralPage::changeKeys()
{
    // Only the first of several combinations can be had.
    const auto keys = m_keys->keySequence();
    const auto wanted = keys.isEmpty() ? QKeySequence() : QKeySequence(keys[0]);
    if (wanted != m_desktop.hotKey->keys())
        m_desktop.hotKey->change(wanted);
    else
        showKeys();
}

void GeneralPage::showKeys()
{
    const QSignalBlocker quiet(m_keys);
    m_keys->setKeySequence(m_desktop.hotKey->keys());
    m_keyRow->setProblem({});
}

} // namespace pobblewig
