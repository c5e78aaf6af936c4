#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QCheckBox>

namespace pobblewig {

/// A check box that looks like a switch, for what takes effect at once.
class Switch : public QCheckBox {
    Q_OBJECT

public:
    explicit Switch(QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// Shows what is the case, without a signal.
    void showOn(bool isOn);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has switched, by whatever means.
    void switched(bool isOn);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& place) const override;

private:
    bool m_isShowing = false;
    Palette m_palette;
};

} // namespace pobblewig
