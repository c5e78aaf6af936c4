#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"

#include <QObject>

class QBoxLayout;

namespace pobblewig {

class Banner;

/// The messages above the input: what went wrong in a turn and what helps, and what else there is
/// to say.
class ConversationBanners : public QObject {
    Q_OBJECT

public:
    /// The banners belong to the panel.
    ConversationBanners(ChatService& chat, QWidget& panel);

    void addTo(QBoxLayout& column) const;
    void setTheme(const Palette& palette);

    /// A one-off message about the program; an empty text takes it back.
    void setNotice(const QString& text);

    void setNewSessionEnabled(bool isEnabled);

Q_SIGNALS:
    void newSessionRequested();

private:
    void showError();
    void showRemedy();
    void showHint();
    void remedy();

    ChatService& m_chat;
    bool m_isNewSessionEnabled = true;
    Banner* m_notice;
    Banner* m_hint;
    Banner* m_error;
    Banner* m_cutOff;
};

} // namespace pobblewig
