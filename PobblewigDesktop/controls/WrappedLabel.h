#pragma once

#include <QLabel>

#include <limits>
#include <memory>

class QTextLayout;

namespace pobblewig {

/// A text that takes as many lines as it needs and breaks words that are too long for one. Beyond a
/// limit, the last line ends in "…"; assistive technology still reads the whole text.
class WrappedLabel : public QLabel {
    Q_OBJECT

public:
    static constexpr int unlimited = std::numeric_limits<int>::max();

    explicit WrappedLabel(const QString& text, QWidget* parent = nullptr);

    /// The number of lines at the present width.
    int lineCount() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

    void setMostLines(int count);

Q_SIGNALS:
    /// The lines may have changed.
    void wrapped();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::unique_ptr<QTextLayout> lines(int width) const;

    int m_mostLines = unlimited;
};

} // namespace pobblewig
