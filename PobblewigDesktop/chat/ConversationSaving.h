#pragma once

#include "conversation/ChatService.h"
#include "foundation/Calendar.h"

#include <QObject>

class QWidget;

namespace pobblewig {

/// Asks the user for a file and writes the conversation into it as text.
class ConversationSaving : public QObject {
    Q_OBJECT

public:
    /// The dialog belongs to the window.
    ConversationSaving(ChatService& chat, Calendar calendar, QWidget& window);

    void ask();

Q_SIGNALS:
    /// `problem` is for the user to read.
    void failed(const QString& problem);

private:
    void saveTo(const QString& path);

    ChatService& m_chat;
    Calendar m_calendar;
    QWidget& m_window;
};

} // namespace pobblewig
