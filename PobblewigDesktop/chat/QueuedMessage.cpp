#include "PobblewigDesktop/chat/QueuedMessage.h"

#include "PobblewigDesktop/chat/Paragraphs.h"
#include "conversation/attachments/AttachmentLogic.h"

namespace pobblewig {

QueuedMessage::QueuedMessage(QWidget* parent)
    : ComposerBar({ .name = tr("Next message"), .actionName = tr("Do not send") }, parent)
{
}

void QueuedMessage::add(const QString& text, const Attachments& attachments)
{
    m_text = Paragraphs::joined(m_text, text);
    m_attachments.insert(m_attachments.end(), attachments.begin(), attachments.end());
    tell();
}

void QueuedMessage::clear()
{
    m_text.clear();
    m_attachments.clear();
    tell();
}

void QueuedMessage::tell()
{
    const auto words = AttachmentLogic::withLine(m_text, m_attachments);
    setText(m_text.isEmpty() ? QString() : tr("Next: %1").arg(words));
}

} // namespace pobblewig
