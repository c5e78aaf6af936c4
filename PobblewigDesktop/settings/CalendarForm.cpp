#include "PobblewigDesktop/settings/CalendarForm.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/FieldRow.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace pobblewig {

namespace {

constexpr int gap = 8;
constexpr int longestPath = 40;

using Kind = CalendarSource::Kind;

QString shortened(const QString& path)
{
    return path.size() > longestPath ? u'…' + path.right(longestPath) : path;
}

} // namespace

CalendarForm::CalendarForm(QWidget* parent)
    : QWidget(parent)
    , m_kind(new QComboBox)
    , m_folder(new QPushButton)
    , m_choice(new QWidget)
    , m_sync(new QPushButton(tr("Sync now")))
    , m_state(new WrappedLabel({}))
{
    m_kind->addItem(tr("The desktop's calendars"), int(Kind::service));
    m_kind->addItem(tr("A folder of .ics files"), int(Kind::folder));
    m_sync->setAccessibleName(tr("Sync calendars now"));
    m_state->setAccessibleName(tr("Calendars state"));
    for (auto* const button : { m_folder, m_sync })
        button->setAutoDefault(false);
    arrange();
    connect(m_kind, &QComboBox::activated, this, &CalendarForm::choose);
    connect(m_folder, &QPushButton::clicked, this, &CalendarForm::askForFolder);
    connect(m_sync, &QPushButton::clicked, this, &CalendarForm::syncRequested);
}

void CalendarForm::showSource(const std::optional<CalendarSource>& source)
{
    m_source = source;
    m_choice->setVisible(source.has_value());
    if (!source)
        return;
    m_kind->setCurrentIndex(m_kind->findData(int(source->kind)));
    m_folder->setVisible(source->kind == Kind::folder);
    const auto path = QDir::toNativeSeparators(source->folder);
    m_folder->setText(path.isEmpty() ? tr("Choose a folder…") : shortened(path));
    m_folder->setAccessibleName(tr("Calendar folder"));
    m_folder->setAccessibleDescription(path);
    m_folder->setToolTip(path);
}

void CalendarForm::showStatus(
    const ConnectionStatus& status, TimePoint now, const Calendar& calendar)
{
    const auto hasFailed = status.isWanted && !status.isSyncing && status.error.has_value();
    PanelStyle::setRole(*m_state, hasFailed ? QStringLiteral("problem") : QStringLiteral("detail"));
    PanelStyle::setText(*m_state, ConnectionTexts::state(status, now, calendar));
    m_sync->setEnabled(status.isWanted && !status.isSyncing);
}

void CalendarForm::arrange()
{
    auto* const choice = new QVBoxLayout(m_choice);
    choice->setContentsMargins(0, 0, 0, 0);
    choice->setSpacing(0);
    choice->addWidget(new FieldRow({ tr("Read from") }, *m_kind));
    choice->addWidget(m_folder, 0, Qt::AlignTrailing);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(m_sync);
    buttons->addStretch(1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_choice);
    column->addSpacing(gap);
    column->addLayout(buttons);
    column->addSpacing(gap);
    column->addWidget(m_state);
    column->addSpacing(gap);
}

void CalendarForm::choose(int row)
{
    const auto kind = Kind(m_kind->itemData(row).toInt());
    if (!m_source || kind == m_source->kind)
        return;
    if (kind == Kind::folder && m_source->folder.isEmpty())
        askForFolder();
    else
        Q_EMIT sourceChosen({ kind, m_source->folder });
}

void CalendarForm::askForFolder()
{
    const auto start =
        m_source && !m_source->folder.isEmpty() ? m_source->folder : QDir::homePath();
    auto* const dialog = new QFileDialog(this, tr("Folder of calendars"), start);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        Q_EMIT sourceChosen({ Kind::folder, path });
    });
    // Without a folder the choice is what it was.
    connect(dialog, &QFileDialog::rejected, this, [this] { showSource(m_source); });
    dialog->open();
}

} // namespace pobblewig
