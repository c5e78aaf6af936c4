#include "PobblewigDesktop/chat/ConversationSaving.h"

#include "PobblewigDesktop/chat/ConversationLogic.h"
#include "foundation/FileOperations.h"

#include <QFileDialog>
#include <QStandardPaths>

namespace pobblewig {

namespace {

QString documents()
{
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(folder).exists() ? folder : QDir::homePath();
}

} // namespace

ConversationSaving::ConversationSaving(ChatService& chat, Calendar calendar, QWidget& window)
    : QObject(&window)
    , m_chat(chat)
    , m_calendar(std::move(calendar))
    , m_window(window)
{
}

void ConversationSaving::ask()
{
    auto* const dialog = new QFileDialog(&m_window, tr("Save conversation"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    // Windows do not inherit the colours of the one they belong to.
    dialog->setPalette(m_window.palette());
    dialog->setDirectory(documents());
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->setNameFilter(tr("Text files (*.txt)"));
    dialog->selectFile(tr("Pobblewig conversation.txt"));
    connect(dialog, &QFileDialog::fileSelected, this, &ConversationSaving::saveTo);
    dialog->open();
}

void ConversationSaving::saveTo(const QString& path)
{
    const auto text = ConversationLogic::transcript(m_chat.messages(), m_calendar);
    const auto saved = writeDurably(path, text.toUtf8(), FileOperations());
    if (!saved)
        Q_EMIT failed(tr("Couldn't save the conversation: %1").arg(saved.error().description()));
}

} // namespace pobblewig
