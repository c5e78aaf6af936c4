#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QStyledItemDelegate>

namespace pobblewig {

/// Draws an entry on two lines of the same height everywhere, so that a list need not measure its
/// rows.
class EntryDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setTheme(const Palette& palette) { m_palette = palette; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    Palette m_palette;
};

} // namespace pobblewig
