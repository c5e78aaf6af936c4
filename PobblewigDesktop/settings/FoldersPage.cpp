#include "PobblewigDesktop/settings/FoldersPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/Switch.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "settings/SharedFolders.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int gap = 8;

WrappedLabel* label(const QString& text, const char* role)
{
    auto* const label = new WrappedLabel(text);
    PanelStyle::setRole(*label, QLatin1String(role));
    return label;
}

} // namespace

FoldersPage::FoldersPage(AppCoordinator& coordinator)
    : FormPage(tr("Folders"))
    , m_editor(coordinator)
    , m_empty(label(tr("No folder is shared. The assistant can read only what is in the folders "
                       "that you add here."),
          "detail"))
    , m_problem(label({}, "problem"))
    , m_list(new QWidget)
{
    addExplanation(tr("The assistant may list and read the files in these folders, never change "
                      "them. Files that hold passwords and keys stay closed to it."));
    auto* const column = new QVBoxLayout(m_list);
    column->setContentsMargins(0, gap, 0, gap);
    column->setSpacing(gap);
    addGap();
    add(*m_empty);
    add(*m_list);
    add(*m_problem);
    m_problem->hide();
    auto* const addButton = new QPushButton(tr("Add a folder…"));
    addButton->setAutoDefault(false);
    auto* const buttons = new QWidget;
    auto* const buttonRow = new QHBoxLayout(buttons);
    buttonRow->setContentsMargins(0, 0, 0, 0);
    buttonRow->addWidget(addButton);
    buttonRow->addStretch(1);
    add(*buttons);
    connect(addButton, &QPushButton::clicked, this, &FoldersPage::askForFolder);
    connect(&m_editor, &SettingsEditor::undoOffered, this, &Page::undoOffered);
}

void FoldersPage::showState(const PublishedState& state)
{
    const auto& folders = state.of<SettingsState>().settings.appDataSources;
    if (folders == m_folders && m_list->layout()->count() == int(folders.size()))
        return;
    m_folders = folders;
    showFolders();
}

void FoldersPage::setTheme(const Palette& palette)
{
    m_palette = palette;
    showFolders();
}

void FoldersPage::askForFolder()
{
    auto* const dialog = new QFileDialog(this, tr("Share a folder"), QDir::homePath());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this, &FoldersPage::addFolder);
    dialog->open();
}

void FoldersPage::addFolder(const QString& path)
{
    const auto shared = SharedFolders::with(m_folders, path);
    m_problem->setText(shared ? QString() : shared.error());
    m_problem->setHidden(shared.has_value());
    if (!shared)
        return;
    m_editor.change(tr("%1 is shared.").arg(QDir::toNativeSeparators(path)),
        [&](AppSettings& settings) { settings.appDataSources = *shared; });
}

void FoldersPage::removeFolder(const QUuid& id)
{
    const auto folder = std::ranges::find(m_folders, id, &AppDataSource::id);
    if (folder == m_folders.end())
        return;
    m_editor.change(
        tr("%1 is no longer shared.").arg(folder->rootPath), [&](AppSettings& settings) {
            std::erase_if(settings.appDataSources, [&](const auto& kept) { return kept.id == id; });
        });
}

void FoldersPage::setEnabled(const QUuid& id, bool isEnabled)
{
    const auto done = isEnabled ? tr("The folder is shared.") : tr("The folder is not shared now.");
    m_editor.change(done, [&](AppSettings& settings) {
        for (auto& folder : settings.appDataSources) {
            if (folder.id == id)
                folder.enabled = isEnabled;
        }
    });
}

void FoldersPage::showFolders()
{
    while (auto* const item = m_list->layout()->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    for (const auto& folder : m_folders)
        m_list->layout()->addWidget(line(folder));
    m_empty->setVisible(m_folders.empty());
}

QWidget* FoldersPage::line(const AppDataSource& folder)
{
    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    auto* const words = new QVBoxLayout;
    words->setSpacing(0);
    words->addWidget(label(folder.name, ""));
    words->addWidget(label(folder.rootPath, "detail"));
    auto* const toggle = new Switch;
    toggle->setTheme(m_palette);
    toggle->showOn(folder.enabled);
    toggle->setAccessibleName(folder.name);
    auto* const remove = new QToolButton;
    remove->setIcon(Icons::icon(Icons::Name::close, m_palette.text, m_palette.muted));
    remove->setAccessibleName(tr("Stop sharing %1").arg(folder.name));
    remove->setToolTip(remove->accessibleName());
    row->addLayout(words, 1);
    row->addWidget(toggle);
    row->addWidget(remove);
    connect(toggle, &Switch::switched, this,
        [this, id = folder.id](bool isOn) { setEnabled(id, isOn); });
    connect(remove, &QToolButton::clicked, this, [this, id = folder.id] { removeFolder(id); });
    return line;
}

} // namespace pobblewig
