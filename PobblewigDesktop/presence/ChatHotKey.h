#pragma once

#include "presence/HotKeyProviding.h"

#include <QSettings>

namespace pobblewig {

/// The keys that show and hide the chat from anywhere. The user's choice is kept with the settings
/// that concern only this desktop.
class ChatHotKey : public QObject {
    Q_OBJECT

public:
    explicit ChatHotKey(QSettings& settings);

    static QKeySequence defaultKeys();

    /// The keys that the user wants; empty for none.
    QKeySequence keys() const;

    /// Whether some keys are ours at present.
    bool isHeld() const { return m_isHeld; }

    /// Takes the keys. To be called once; `hotKeys` outlives this object.
    void start(HotKeyProviding& hotKeys);

    /// Takes other keys, or none, and keeps them for the next start. If they cannot be had, the
    /// previous ones stay.
    void change(const QKeySequence& keys);

Q_SIGNALS:
    void pressed();

    /// The keys that the program starts with cannot be had.
    void missing(const HotKeyError& error);

    /// The outcome of `change`.
    void changed();
    void notChanged(const HotKeyError& error);

private:
    Task<> takeKept();
    Task<> takeOthers(QKeySequence keys);
    void keep(const QKeySequence& keys);

    QSettings& m_settings;
    HotKeyProviding* m_hotKeys = nullptr;
    bool m_isHeld = false;
};

} // namespace pobblewig
