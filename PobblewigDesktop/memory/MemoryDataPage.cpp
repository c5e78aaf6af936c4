#include "PobblewigDesktop/memory/MemoryDataPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "foundation/FileOperations.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

namespace pobblewig {

namespace {

QString counted(qsizetype count, const QString& one, const QString& many)
{
    return count == 1 ? one : many.arg(QLocale().toString(count));
}

} // namespace

MemoryDataPage::MemoryDataPage(AppCoordinator& coordinator, const Calendar&)
    : FormPage(tr("Export and delete"))
    , m_coordinator(coordinator)
    , m_contents(new WrappedLabel(QString()))
    , m_problem(new WrappedLabel(QString()))
{
    add(*m_contents);
    addHeading(tr("Export"));
    addExplanation(tr("One file with everything: as Markdown to read, or as JSON for programs. It "
                      "is not encrypted."));
    addGap();
    connect(&addButton(tr("Export everything…")), &QPushButton::clicked, this,
        &MemoryDataPage::askForFile);
    PanelStyle::setRole(*m_problem, QStringLiteral("problem"));
    m_problem->hide();
    add(*m_problem);
    addHeading(tr("Delete all memory"));
    addExplanation(tr("Deleted: the notes and patterns, the facts and the sections you confirmed, "
                      "days and weeks, observations, the conversation and all earlier ones, and "
                      "every copy of these that Pobblewig has made."));
    addExplanation(tr("Kept: your settings, check-in rules, activity times, shared folders, keys, "
                      "and files that you have exported."));
    addGap();
    auto& button = addButton(tr("Delete all memory…"));
    PanelStyle::setRole(button, QStringLiteral("danger"));
    connect(&button, &QPushButton::clicked, this, &MemoryDataPage::askToDelete);
}

void MemoryDataPage::showState(const PublishedState&)
{
    PanelStyle::setText(*m_contents, tr("Pobblewig remembers %1.").arg(inWords()));
}

QPushButton& MemoryDataPage::addButton(const QString& text)
{
    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    auto* const button = new QPushButton(text);
    button->setAutoDefault(false);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(button);
    row->addStretch(1);
    add(*line);
    return *button;
}

void MemoryDataPage::askForFile()
{
    auto* const dialog = new QFileDialog(this, tr("Export memory"),
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const auto jsonFilter = tr("JSON (*.json)");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({ tr("Markdown (*.md)"), jsonFilter });
    dialog->setDefaultSuffix(QStringLiteral("md"));
    connect(dialog, &QFileDialog::filterSelected, dialog, [=](const QString& filter) {
        dialog->setDefaultSuffix(
            filter == jsonFilter ? QStringLiteral("json") : QStringLiteral("md"));
    });
    dialog->selectFile(tr("Pobblewig memory"));
    connect(dialog, &QFileDialog::fileSelected, this, &MemoryDataPage::save);
    dialog->open();
}

void MemoryDataPage::save(const QString& path)
{
    const auto& desk = m_coordinator.memoryDesk();
    const auto isJSON = path.endsWith(u".json", Qt::CaseInsensitive);
    const auto saved =
        writeDurably(path, isJSON ? desk.exportJSON() : desk.exportMarkdown(), FileOperations());
    m_problem->setHidden(saved.has_value());
    if (!saved)
        PanelStyle::setText(
            *m_problem, tr("Couldn't export the memory: %1").arg(saved.error().description()));
}

void MemoryDataPage::askToDelete()
{
    auto* const question = new QMessageBox(QMessageBox::NoIcon, tr("Delete all memory"),
        tr("Delete all that Pobblewig remembers?"), QMessageBox::Cancel, this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setInformativeText(
        tr("%1 will be gone for good, with this conversation and all earlier ones.")
            .arg(inWords()));
    auto* const agreed = question->addButton(tr("Delete"), QMessageBox::DestructiveRole);
    question->setDefaultButton(QMessageBox::Cancel);
    connect(agreed, &QAbstractButton::clicked, this, &MemoryDataPage::deleteAll);
    question->open();
}

void MemoryDataPage::deleteAll()
{
    // What was deleted before must not come back after this.
    Q_EMIT undoOffered({}, {});
    m_coordinator.memoryDesk().deleteAllMemory();
}

QString MemoryDataPage::inWords() const
{
    const auto& memory = m_coordinator.memory();
    const QStringList counts {
        counted(std::ssize(memory.notes.notes()), tr("1 note"), tr("%1 notes")),
        counted(std::ssize(memory.notes.allPatterns()), tr("1 pattern"), tr("%1 patterns")),
        counted(std::ssize(memory.reference.allItems()), tr("1 fact"), tr("%1 facts")),
        counted(std::ssize(memory.summaries.all()), tr("1 summary"), tr("%1 summaries")),
        counted(memory.observations.count(), tr("1 observation"), tr("%1 observations")),
    };
    return QLocale().createSeparatedList(counts);
}

} // namespace pobblewig
