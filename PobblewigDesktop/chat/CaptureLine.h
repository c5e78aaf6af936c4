#pragma once

#include <QLabel>

namespace pobblewig {

class ChatService;

/// Says what the picture of the screen shows that is with the turn.
class CaptureLine : public QLabel {
    Q_OBJECT

public:
    /// The chat must outlive the line.
    explicit CaptureLine(const ChatService& chat, QWidget* parent = nullptr);

private:
    void refresh();

    const ChatService& m_chat;
};

} // namespace pobblewig
