#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QStyledItemDelegate>

namespace pobblewig {

/// Draws headings and entries, each kind of the same height everywhere, so that a list need not
/// measure texts.
class ComingUpDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setTheme(const Palette& palette);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintHeading(
        QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintEntry(
        QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    Palette m_palette;
    /// By the number of the accent.
    QList<QColor> m_colors;
};

} // namespace pobblewig
