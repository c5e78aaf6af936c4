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

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& place) const override;

private:
    Palette m_palette;
};

} // namespace pobblewig
