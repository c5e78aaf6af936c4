#include "PobblewigDesktop/settings/CompanionPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QPushButton>
#include <QUrl>

namespace pobblewig {

CompanionPage::CompanionPage(const Settings& settings, AppCoordinator& coordinator)
    : CatalogPage(SettingCatalog::title(SettingsPage::companion), settings, coordinator)
    , m_memes(coordinator.memes())
    , m_library(new WrappedLabel({}))
    , m_outcome(new WrappedLabel({}))
{
    addLibrary();
}

void CompanionPage::showState(const PublishedState& state)
{
    CatalogPage::showState(state);
    const auto& memes = state.of<MemesState>();
    m_library->setText(memes.problem.value_or(memes.memeLibrarySummary));
    m_outcome->setText(
        tr("After the last reply: %1").arg(memes.memeLastOutcome.value_or(QString())));
    m_outcome->setVisible(memes.memeLastOutcome.has_value());
}

void CompanionPage::addLibrary()
{
    addGap();
    addHeading(tr("Memes"));
    m_library->setAccessibleName(tr("Meme library"));
    add(*m_library);
    PanelStyle::setRole(*m_outcome, QLatin1String("detail"));
    add(*m_outcome);
    auto* const open = new QPushButton(tr("Open folder"));
    auto* const reload = new QPushButton(tr("Reload library"));
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    for (auto* const button : { open, reload }) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    add(*buttons);
    connect(open, &QPushButton::clicked, this, &CompanionPage::openFolder);
    connect(reload, &QPushButton::clicked, this, [this] { spawn(m_memes.library().reload()); });
}

void CompanionPage::openFolder()
{
    const auto& folders = m_memes.library().folderStates();
    if (!folders.empty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(folders.front().directory.absolutePath()));
}

} // namespace pobblewig
