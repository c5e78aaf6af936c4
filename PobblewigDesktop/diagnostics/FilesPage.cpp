#include "PobblewigDesktop/diagnostics/FilesPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/diagnostics/DiagnosticsTexts.h"
#include "PobblewigDesktop/diagnostics/RecordTable.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QPushButton>
#include <QUrl>

namespace pobblewig {

FilesPage::FilesPage(const DiagnosticsDesk& desk)
    : FormPage(tr("Files"))
    , m_desk(desk)
    , m_files(new RecordTable(
          tr("Files"), { tr("Name"), tr("Size"), tr("Changed") }, tr("There are no files yet.")))
    , m_setAside(new WrappedLabel({}))
{
    addExplanation(tr("All that Pobblewig knows is in %1.")
                       .arg(QDir::toNativeSeparators(desk.directory().path())));
    addGap();
    add(*m_files);
    addGap();
    PanelStyle::setRole(*m_setAside, QStringLiteral("detail"));
    add(*m_setAside);
    addGap();
    add(folderButton());
}

void FilesPage::showEvent(QShowEvent* event)
{
    FormPage::showEvent(event);
    list();
}

QWidget& FilesPage::folderButton()
{
    auto* const open = new QPushButton(tr("Open folder"));
    open->setAutoDefault(false);
    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(open);
    row->addStretch(1);
    connect(open, &QPushButton::clicked, this,
        [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(m_desk.directory().path())); });
    return *line;
}

void FilesPage::list()
{
    const auto calendar = m_desk.calendar();
    std::vector<QStringList> rows;
    int setAside = 0;
    for (const auto& file : m_desk.files()) {
        rows.push_back({ file.name, calendar.locale.formattedDataSize(file.bytes),
            DiagnosticsTexts::time(file.changedAt, calendar) });
        setAside += int(file.isSetAside);
    }
    m_files->setRows(std::move(rows));
    m_setAside->setVisible(setAside > 0);
    PanelStyle::setText(*m_setAside,
        tr("Files that could not be understood are kept with \".corrupt-\" in their name: %1.")
            .arg(setAside));
}

} // namespace pobblewig
