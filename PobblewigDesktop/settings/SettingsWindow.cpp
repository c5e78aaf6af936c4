#include "PobblewigDesktop/settings/SettingsWindow.h"

#include "PobblewigDesktop/pages/KeysPage.h"
#include "PobblewigDesktop/settings/AboutPage.h"
#include "PobblewigDesktop/settings/CompanionPage.h"
#include "PobblewigDesktop/settings/ConfirmationsPage.h"
#include "PobblewigDesktop/settings/ConnectionsPage.h"
#include "PobblewigDesktop/settings/FoldersPage.h"
#include "PobblewigDesktop/settings/ModelsPage.h"
#include "PobblewigDesktop/settings/SettingsSearch.h"

#include <QCompleter>
#include <QLineEdit>
#include <QShortcut>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Kind = SettingsPage;

/// Settings that have a page of their own are left out.
CatalogPage::Settings settingsOf(Kind page)
{
    auto settings = SettingCatalog::onPage(page);
    std::erase_if(settings, [](const Setting* setting) {
        constexpr std::array others { u"appDataSources", u"actionConfirmations" };
        return std::ranges::find(others, setting->key) != others.end();
    });
    return settings;
}

PageEntry catalogPage(const QString& id, Icons::Name icon, Kind page, AppCoordinator& from)
{
    const auto title = SettingCatalog::title(page);
    return { id, title, icon, [title, page, &from]() -> std::unique_ptr<Page> {
                return std::make_unique<CatalogPage>(title, settingsOf(page), from);
            } };
}

PageEntries entries(AppCoordinator& from, const GeneralPage::Desktop& desktop, const Moment& moment)
{
    using enum Icons::Name;
    return {
        { QStringLiteral("general"), SettingCatalog::title(Kind::general), sliders,
            [&from, desktop] {
                return std::make_unique<GeneralPage>(settingsOf(Kind::general), from, desktop);
            } },
        { QStringLiteral("companion"), SettingCatalog::title(Kind::companion), face,
            [&from] {
                return std::make_unique<CompanionPage>(settingsOf(Kind::companion), from);
            } },
        { QStringLiteral("models"), SettingsWindow::tr("Models"), chip,
            [&from] { return std::make_unique<ModelsPage>(from.modelDesk()); } },
        { QStringLiteral("connections"), SettingCatalog::title(Kind::connections), plug,
            [&from, moment] { return std::make_unique<ConnectionsPage>(from, moment); } },
        catalogPage(QStringLiteral("activity"), clock, Kind::activity, from),
        catalogPage(QStringLiteral("privacy"), shield, Kind::memoryAndPrivacy, from),
        { QStringLiteral("confirmations"), SettingsWindow::tr("Confirmations"), check,
            [&from, moment] {
                return std::make_unique<ConfirmationsPage>(from, moment.calendar());
            } },
        { QStringLiteral("folders"), SettingsWindow::tr("Folders"), folder,
            [&from] { return std::make_unique<FoldersPage>(from); } },
        { QStringLiteral("shortcuts"), SettingsWindow::tr("Shortcuts"), list,
            [] { return std::make_unique<KeysPage>(SettingsWindow::tr("Shortcuts")); } },
        { QStringLiteral("about"), SettingsWindow::tr("About"), info,
            [] { return std::make_unique<AboutPage>(); } },
    };
}

} // namespace

SettingsWindow::SettingsWindow(
    AppCoordinator& coordinator, const GeneralPage::Desktop& desktop, const Moment& moment)
    : PageWindow(tr("Pobblewig Settings"), entries(coordinator, desktop, moment))
    , m_search(new QLineEdit(this))
{
    addSearch();
}

void SettingsWindow::addSearch()
{
    m_search->setPlaceholderText(tr("Search settings"));
    m_search->setAccessibleName(tr("Search settings"));
    m_search->setClearButtonEnabled(true);
    auto* const completer = new QCompleter(SettingsSearch::names(), m_search);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    m_search->setCompleter(completer);
    connect(
        completer, qOverload<const QString&>(&QCompleter::activated), this, &SettingsWindow::find);
    connect(m_search, &QLineEdit::returnPressed, this, [this] { find(m_search->text()); });
    auto* const keys = new QShortcut(QKeySequence::Find, this);
    connect(keys, &QShortcut::activated, m_search, qOverload<>(&QWidget::setFocus));
    addAbovePages(*m_search);
}

void SettingsWindow::find(const QString& words)
{
    if (const auto place = SettingsSearch::place(words))
        reveal(place->page, place->key);
}

} // namespace pobblewig
