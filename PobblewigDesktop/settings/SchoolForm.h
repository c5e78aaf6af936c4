#pragma once

#include "PobblewigDesktop/settings/ConnectionTexts.h"

#include <QWidget>

class QLineEdit;
class QPushButton;

namespace pobblewig {

class FieldRow;
class WrappedLabel;

/// What connects a school service: its address, a token, and below them how it is doing. The token
/// is passed on and never shown.
class SchoolForm : public QWidget {
    Q_OBJECT

public:
    /// For assistive technology, the buttons are told apart by names of their own.
    struct Words {
        /// Empty for a service that is at one place for everybody.
        QString address = {};
        QString token;
        /// Where the user gets one.
        QString tokenHint;
        QString connect;
        QString sync;
        QString disconnect;
        QString state;
    };

    explicit SchoolForm(const Words& words, QWidget* parent = nullptr);

    /// What the user is about to write stays.
    void showAddress(const QString& address);
    void showStatus(const ConnectionStatus& status, TimePoint now, const Calendar& calendar);
    void focusField();

Q_SIGNALS:
    /// The address is empty for the usual one, the token to keep the present one.
    void connectRequested(const QString& address, const QString& token);
    void syncRequested();
    void disconnectRequested();

private:
    void arrange(const Words& words);
    void requestConnection();
    /// Says what is missing.
    bool canConnect(const std::optional<QString>& address);

    QLineEdit* m_address;
    QLineEdit* m_token;
    FieldRow* m_addressRow = nullptr;
    FieldRow* m_tokenRow = nullptr;
    QPushButton* m_connect;
    QPushButton* m_sync;
    QPushButton* m_disconnect;
    WrappedLabel* m_state;
    QString m_shownAddress;
    /// Where the present token belongs to.
    QString m_keptAddress;
    bool m_isConnected = false;
};

} // namespace pobblewig
