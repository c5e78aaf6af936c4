#include "PobblewigDesktop/chat/past/PastConversations.h"

#include "PobblewigDesktop/chat/ConversationLogic.h"
#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/chat/past/ConversationExport.h"
#include "PobblewigDesktop/chat/past/PastSearchField.h"
#include "PobblewigDesktop/controls/Banner.h"
#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "foundation/FileOperations.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QUrl>

namespace pobblewig {

namespace {

constexpr QSize windowSize(820, 600);
constexpr QSize leastSize(560, 360);
constexpr int listWidth = 280;
constexpr int margin = 16;
constexpr int gap = 8;

QString markdownFilter()
{
    return PastConversations::tr("Markdown (*.md)");
}

QString counted(int messages)
{
    return messages == 1 ? PastConversations::tr("1 message")
                         : PastConversations::tr("%1 messages").arg(messages);
}

QString jsonFilter()
{
    return PastConversations::tr("JSON (*.json)");
}

} // namespace

PastConversations::PastConversations(
    ConversationLibrary& library, Calendar calendar, Clock clock, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_library(library)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
    , m_model(new ConversationModel(this))
    , m_wanted(new PastSearchField(this))
    , m_list(new QListWidget(this))
    , m_note(new QLabel(this))
    , m_view(new ConversationView(*m_model, this))
    , m_matches(*m_model, *m_view)
    , m_problem(new Banner(Banner::Kind::error, tr("Error"), {}, this))
    , m_copy(new QPushButton(tr("Copy"), this))
    , m_export(new QPushButton(tr("Export…"), this))
    , m_delete(new QPushButton(tr("Delete…"), this))
{
    setWindowTitle(tr("Past conversations"));
    setMinimumSize(leastSize);
    resize(windowSize);
    arrange();
    connect(m_wanted, &PastSearchField::wantedChanged, this, &PastConversations::find);
    connect(m_wanted, &PastSearchField::stepRequested, this, &PastConversations::step);
    connect(m_list, &QListWidget::currentRowChanged, this, &PastConversations::readSelected);
    connect(m_copy, &QPushButton::clicked, this, &PastConversations::copy);
    connect(m_export, &QPushButton::clicked, this, &PastConversations::exportSelected);
    connect(m_delete, &QPushButton::clicked, this, &PastConversations::askToDelete);
    connect(m_view, &ConversationView::linkRequested, this,
        [](const QString& address) { QDesktopServices::openUrl(QUrl(address)); });
    connect(m_view, &ConversationView::findRequested, m_wanted, qOverload<>(&QWidget::setFocus));
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_wanted,
        qOverload<>(&QWidget::setFocus));
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::hide);
    setTheme(Theme::palette(Theme::desktopScheme(palette()), {}));
    showState();
}

PastConversations::~PastConversations()
{
    m_search.request_stop();
}

void PastConversations::setTheme(const Palette& palette)
{
    PanelStyle::apply(*this, palette);
    m_view->setTheme(palette);
    m_problem->setTheme(palette);
}

void PastConversations::reveal(const QString& name)
{
    m_wantedName = name;
    m_wanted->clear();
    find();
}

void PastConversations::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_wanted->setFocus();
    find();
}

void PastConversations::arrange()
{
    m_list->setAccessibleName(tr("Days"));
    m_list->setObjectName(QStringLiteral("days"));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setTextElideMode(Qt::ElideRight);
    m_note->setWordWrap(true);
    PanelStyle::setRole(*m_note, QStringLiteral("detail"));
    m_view->setAccessibleDescription(tr("Select a day to read its conversation."));

    auto* const days = new QVBoxLayout;
    days->setSpacing(gap);
    days->addWidget(m_wanted);
    days->addWidget(m_note);
    days->addWidget(m_list, 1);
    auto* const side = new QWidget(this);
    side->setFixedWidth(listWidth);
    days->setContentsMargins(0, 0, 0, 0);
    side->setLayout(days);

    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(gap);
    buttons->addStretch(1);
    for (auto* const button : { m_copy, m_export, m_delete })
        buttons->addWidget(button);
    auto* const reading = new QVBoxLayout;
    reading->setSpacing(gap);
    reading->addWidget(m_view, 1);
    reading->addWidget(m_problem);
    reading->addLayout(buttons);

    auto* const columns = new QHBoxLayout(this);
    columns->setContentsMargins(margin, margin, margin, margin);
    columns->setSpacing(margin);
    columns->addWidget(side);
    columns->addLayout(reading, 1);
}

void PastConversations::find()
{
    m_search.request_stop();
    m_search = std::stop_source();
    const auto stop = m_search.get_token();
    QCoro::connect(m_library.find(m_wanted->wanted(), stop), this,
        [this, stop](std::vector<PastConversation> found) {
            if (!stop.stop_requested())
                list(std::move(found));
        });
}

void PastConversations::step(int step)
{
    m_matches.step(step);
    showState();
}

void PastConversations::list(std::vector<PastConversation> conversations)
{
    const auto* const shown = selected();
    const auto kept = shown ? std::optional(shown->name) : std::nullopt;
    const auto name = m_wantedName ? std::exchange(m_wantedName, std::nullopt) : kept;
    auto row = 0;
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    m_conversations = std::move(conversations);
    for (const auto& conversation : m_conversations) {
        if (conversation.name == name)
            row = m_list->count();
        m_list->addItem(title(conversation) + u'\n' + isolated(conversation.line));
    }
    m_list->setCurrentRow(m_conversations.empty() ? -1 : row);
    readSelected();
}

void PastConversations::readSelected()
{
    const auto* const conversation = selected();
    showState();
    if (!conversation) {
        read({});
        return;
    }
    QCoro::connect(m_library.read(conversation->name), this,
        [this, name = conversation->name](const Messages& messages) {
            if (const auto* const shown = selected(); shown && shown->name == name)
                read(messages);
        });
}

void PastConversations::read(const Messages& messages)
{
    m_messages = messages;
    m_model->setRows(ConversationLogic::rows(messages, m_clock(), m_calendar));
    const auto* const conversation = selected();
    if (conversation && conversation->match)
        m_view->reveal({ *conversation->match, {} });
    m_matches.search(m_wanted->wanted());
    showState();
}

void PastConversations::copy() const
{
    QGuiApplication::clipboard()->setText(ConversationLogic::transcript(m_messages, m_calendar));
}

void PastConversations::exportSelected()
{
    auto* const dialog = new QFileDialog(this, tr("Export conversation"),
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({ markdownFilter(), jsonFilter() });
    dialog->setDefaultSuffix(QStringLiteral("md"));
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
        dialog->setDefaultSuffix(
            filter == jsonFilter() ? QStringLiteral("json") : QStringLiteral("md"));
    });
    dialog->selectFile(tr("Conversation %1").arg(selected()->day.toString(Qt::ISODate)));
    connect(dialog, &QFileDialog::fileSelected, this,
        [this, dialog](const QString& path) { save(path, dialog->selectedNameFilter()); });
    dialog->open();
}

void PastConversations::save(const QString& path, const QString& filter)
{
    const auto bytes = filter == jsonFilter()
        ? ConversationExport::json(m_messages)
        : ConversationExport::markdown(m_messages, m_calendar);
    if (const auto saved = writeDurably(path, bytes, FileOperations()); !saved)
        m_problem->setText(
            tr("Couldn't export the conversation: %1").arg(saved.error().description()));
}

void PastConversations::askToDelete()
{
    const auto& conversation = *selected();
    const auto day = m_calendar.locale.toString(conversation.day, QLocale::LongFormat);
    auto* const question = new QMessageBox(QMessageBox::NoIcon, tr("Delete conversation"),
        tr("Delete the conversation of %1?").arg(day), QMessageBox::Cancel, this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setInformativeText(
        tr("%1 will be gone for good. What Pobblewig has noted about you stays.")
            .arg(counted(conversation.messageCount)));
    auto* const agreed = question->addButton(tr("Delete"), QMessageBox::DestructiveRole);
    question->setDefaultButton(QMessageBox::Cancel);
    connect(agreed, &QAbstractButton::clicked, this,
        [this, name = conversation.name] { deleteConversation(name); });
    question->open();
}

void PastConversations::deleteConversation(const QString& name)
{
    const auto isGone = m_library.remove(name);
    find();
    if (!isGone)
        m_problem->setText(
            tr("Couldn't delete the conversation. Its file may be write-protected."));
}

void PastConversations::showState()
{
    const auto* const conversation = selected();
    const auto isThere = conversation != nullptr;
    m_wanted->setCount(m_matches.inWords());
    m_copy->setEnabled(isThere);
    m_export->setEnabled(isThere);
    // The current conversation ends first, or goes with all memory.
    m_delete->setEnabled(isThere && !conversation->name.isEmpty());
    const auto isSearch = !m_wanted->wanted().trimmed().isEmpty();
    m_note->setText(isSearch ? tr("No conversation has these words.")
                             : tr("Your conversations appear here, day by day."));
    m_note->setVisible(m_conversations.empty());
}

const PastConversation* PastConversations::selected() const
{
    const auto row = m_list->currentRow();
    return row < 0 || row >= std::ssize(m_conversations) ? nullptr : &m_conversations[size_t(row)];
}

QString PastConversations::title(const PastConversation& conversation) const
{
    const auto day =
        ConversationLogic::dayTitle(conversation.day, m_calendar.day(m_clock()), m_calendar.locale);
    return QStringLiteral("%1 · %2").arg(day, counted(conversation.messageCount));
}

} // namespace pobblewig
