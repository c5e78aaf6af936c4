#pragma once

#include "PobblewigDesktop/chat/ComposerBar.h"
#include "memory/history/ChatMessage.h"

#include <optional>

namespace pobblewig {

/// The bar that says that a question is being edited in the input, and what it needs to know.
class QuestionEditing : public ComposerBar {
    Q_OBJECT

public:
    explicit QuestionEditing(QWidget* parent = nullptr);

    bool isUnderWay() const { return m_question.has_value(); }

    /// Null if none is being edited.
    QUuid question() const { return m_question ? m_question->id : QUuid(); }

    /// What stood in the input before.
    const QString& setAside() const { return m_setAside; }

    /// What the user has begun to write, given what stands in the input: without the question,
    /// unless it reads otherwise by now.
    QString begun(const QString& written) const;

    void begin(const ChatMessage& question, const QString& setAside);
    void end();

private:
    std::optional<ChatMessage> m_question;
    QString m_setAside;
};

} // namespace pobblewig
