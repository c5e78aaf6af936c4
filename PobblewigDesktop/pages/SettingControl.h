#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "settings/SettingCatalog.h"

#include <QWidget>

#include <memory>

namespace pobblewig {

/// What the user changes one setting with. It shows the value that is in effect and proposes
/// another one; it changes nothing by itself.
class SettingControl : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    static std::unique_ptr<SettingControl> make(const Setting& setting);

    /// Shows the present value. What the user is about to write stays.
    virtual void show(const AppSettings& settings) = 0;
    virtual void setTheme(const Palette&) { }

    /// The widget that takes the focus, to be named for assistive technology.
    virtual QWidget& field() = 0;

    /// Whether it needs a line of its own.
    virtual bool isWide() const { return false; }

Q_SIGNALS:
    void changed(const JSONValue& value);
};

} // namespace pobblewig
