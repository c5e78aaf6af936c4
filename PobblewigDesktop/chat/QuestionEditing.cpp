#include "PobblewigDesktop/chat/QuestionEditing.h"

#include "PobblewigDesktop/chat/Paragraphs.h"

namespace pobblewig {

QuestionEditing::QuestionEditing(QWidget* parent)
    : ComposerBar(
        { .name = tr("Editing"), .action = tr("Cancel"), .actionName = tr("Cancel editing") },
        parent)
{
}

QString QuestionEditing::begun(const QString& written) const
{
    if (!m_question)
        return written;
    return written == m_question->text ? m_setAside : Paragraphs::joined(m_setAside, written);
}

void QuestionEditing::begin(const ChatMessage& question, const QString& setAside)
{
    m_question = question;
    m_setAside = setAside;
    setText(tr("Editing your last message"));
}

void QuestionEditing::end()
{
    m_question.reset();
    m_setAside.clear();
    setText({});
}

} // namespace pobblewig
