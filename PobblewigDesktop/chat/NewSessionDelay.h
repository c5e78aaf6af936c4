#pragma once

#include <QTimer>

namespace pobblewig {

class Banner;

/// Holds back the user's wish for a new session for a moment, in which a banner offers to take it
/// back. A wish that is still held back when the program ends comes to nothing.
class NewSessionDelay : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::seconds delay { 10 };

    NewSessionDelay(Banner& banner, QObject* parent = nullptr);

    bool isWaiting() const { return m_timer.isActive(); }

    void begin();
    void takeBack();

    /// Ends the wait: what the user writes next belongs to the new session.
    void passNow();

Q_SIGNALS:
    void passed();
    void isWaitingChanged();

private:
    void end();

    Banner& m_banner;
    QTimer m_timer;
};

} // namespace pobblewig
