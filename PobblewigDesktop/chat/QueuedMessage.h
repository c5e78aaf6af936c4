#pragma once

#include "PobblewigDesktop/chat/ComposerBar.h"
#include "conversation/attachments/Attachment.h"

#include <vector>

namespace pobblewig {

/// The message that is sent once the turn has succeeded, in a bar that tells of it.
class QueuedMessage : public ComposerBar {
    Q_OBJECT

public:
    using Attachments = std::vector<Attachment>;

    explicit QueuedMessage(QWidget* parent = nullptr);

    bool isEmpty() const { return m_text.isEmpty(); }
    const QString& text() const { return m_text; }
    const Attachments& attachments() const { return m_attachments; }

    /// Continues the message.
    void add(const QString& text, const Attachments& attachments);
    void clear();

private:
    void tell();

    QString m_text;
    Attachments m_attachments;
};

} // namespace pobblewig
