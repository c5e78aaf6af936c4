#pragma once

#include "presence/HotKeyProviding.h"

#include <QSettings>

namespace pobblewig {

/// The keys that open and hide the chat from anywhere. The user's choice is kept with what only
/// concerns this desktop.
class ChatHotKey : public QObject {
    Q_OBJECT

public:
    explicit ChatHotKey(QSettings& settings);

    static QKeySequence defaultKeys();

    /// Those that the user wants; empty for none.
    QKeySequence keys() const;

    /// Takes the keys, from here on. To be called once; `hotKeys` outlives this.
    void start(HotKeyProviding& hotKeys);

    /// Takes others, or none, and keeps them for the next start. Otherwise the ones before stay.
    void change(const QKeySequence& keys);

Q_SIGNALS:
    void pressed();

    /// The keys of the start cannot be had.
    void missing(const HotKeyError& error);

    /// What has become of `change`.
    void changed();
    void notChanged(const HotKeyError& error);

private:
    Task<> takeKept();
    Task<> takeOthers(QKeySequence keys);
    void keep(const QKeySequence& keys);

    QSettings& m_settings;
    HotKeyProviding* m_hotKeys = nullptr;
};

} // namespace pobblewig
