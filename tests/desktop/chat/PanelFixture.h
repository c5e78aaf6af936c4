#pragma once

#include "PobblewigDesktop/chat/ChatPanel.h"
#include "desktop/chat/ScriptedChat.h"
#include "support/ScratchDirectory.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>

namespace pobblewig {

/// The chat panel in front of the user, with a scripted chat.
struct PanelFixture {
    PanelFixture()
    {
        panel.show();
        if (!QTest::qWaitForWindowActive(&panel))
            qFatal("The panel did not come to the front.");
    }

    template <typename Widget>
    static Widget* find(const QWidget& parent, const char* name)
    {
        for (auto* const widget : parent.findChildren<Widget*>()) {
            if (widget->accessibleName() == QLatin1String(name))
                return widget;
        }
        return nullptr;
    }

    template <typename Widget>
    Widget& named(const char* name) const
    {
        if (auto* const widget = find<Widget>(panel, name))
            return *widget;
        qFatal("There is no control of the name %s.", name);
    }
    /// A control in the banner of the error.
    template <typename Widget>
    Widget& ofError(const char* name) const
    {
        if (auto* const widget = find<Widget>(*label("Error").parentWidget(), name))
            return *widget;
        qFatal("The error has no control of the name %s.", name);
    }
    QAbstractButton& button(const char* name) const { return named<QAbstractButton>(name); }
    QLabel& label(const char* name) const { return named<QLabel>(name); }
    QPlainTextEdit& input() const { return named<QPlainTextEdit>("Message"); }

    ScratchDirectory scratch;
    ScriptedChat talk { scratch };
    ChatPanel panel { talk.chat, Calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) },
        [this] { return talk.time; } };
};

} // namespace pobblewig
