#pragma once

#include "PobblewigDesktop/activity/ChartLogic.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QWidget>

namespace pobblewig {

/// Paints a chart. What the pointer or the arrow keys mark says its value.
class Chart : public QWidget {
    Q_OBJECT

public:
    explicit Chart(const QString& name, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// `summary` is read out until something is marked.
    void setValues(ChartValues values, const QString& summary);

Q_SIGNALS:
    /// Empty if nothing is marked any more.
    void marked(const QString& words);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    static constexpr int none = -1;

    void arrange();
    void mark(int number);
    int markAt(const QPointF& place) const;
    void paintMarks(QPainter& painter) const;
    void paintLabels(QPainter& painter) const;

    ChartValues m_values;
    ChartPicture m_picture;
    QString m_summary;
    int m_marked = none;
    Palette m_palette;
};

} // namespace pobblewig
