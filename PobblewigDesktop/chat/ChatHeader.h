#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>
#include <QIcon>

class QLabel;
class QToolButton;

namespace pobblewig {

class SteadyLabel;

/// The top of the chat panel: the buddy's face, name and state, the model behind it, and the
/// panel's menu.
class ChatHeader : public QFrame {
    Q_OBJECT

public:
    explicit ChatHeader(QWidget* parent = nullptr);

    void setTheme(const Palette& palette);
    void setFace(const QIcon& face);
    void setState(const QString& text);
    void setModelLabel(const QString& text);
    void setNewSessionEnabled(bool isEnabled);

Q_SIGNALS:
    void findRequested();
    void saveRequested();
    void pastRequested();
    void newSessionRequested();
    void keysRequested();

    /// A window is to be opened, such as "pobblewig:settings".
    void linkRequested(const QString& link);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showModelLabel();

    QLabel* m_face;
    SteadyLabel* m_state;
    QLabel* m_model;
    QString m_modelText;
    QToolButton* m_comingUp;
    QToolButton* m_newSession;
    QToolButton* m_menu;
    QAction* m_find;
    QAction* m_save;
    QAction* m_past;
    QAction* m_restart;
    QAction* m_keys;
    QAction* m_comingUpAct;
    QAction* m_memory;
    QAction* m_activity;
    QAction* m_diagnostics;
    QAction* m_settings;
};

} // namespace pobblewig
