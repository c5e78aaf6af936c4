#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"

#include <QObject>
#include <QTimer>

class QBoxLayout;

namespace pobblewig {

class Banner;

/// The messages above the input: what went wrong in a turn and what helps, and what else there is
/// to say.
class ConversationBanners : public QObject {
    Q_OBJECT

public:
    /// The banners belong to the panel.
    ConversationBanners(ChatService& chat, Clock clock, QWidget& panel);

    void addTo(QBoxLayout& column) const;
    void setTheme(const Palette& palette);

    /// A one-off message about the program; an empty text takes it back.
    void setNotice(const QString& text);

    void setNewSessionEnabled(bool isEnabled);

    /// While the user is writing, nothing is asked again by itself.
    void noteTyping();

Q_SIGNALS:
    void newSessionRequested();

private:
    void showProblem();
    void showAdvice();
    void showAction();
    void showCutOff();
    void showHint();
    void remedy();
    void countDown();
    bool retriesByItself() const;
    void noteActivity(bool working, bool succeeded);

    ChatService& m_chat;
    Clock m_clock;
    QTimer m_eachSecond;
    bool m_hasTyped = false;
    /// How many retries in a row nobody has asked for.
    int m_ownRetries = 0;
    bool m_isNewSessionEnabled = true;
    Banner* m_notice;
    Banner* m_hint;
    Banner* m_error;
    Banner* m_cutOff;
};

} // namespace pobblewig
