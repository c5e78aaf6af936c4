#pragma once

#include <QLabel>

#include <limits>
#include <memory>

class QTextLayout;

namespace pobblewig {

/// A text of as many lines as it takes, in which a word that is too long for one is broken. Above a
/// limit the last line ends in "…"; assistive technology reads the whole text all the same.
class WrappedLabel : public QLabel {
    Q_OBJECT

public:
    static constexpr int unlimited = std::numeric_limits<int>::max();

    explicit WrappedLabel(const QString& text, QWidget* parent = nullptr);

    /// At the present width.
    int lineCount() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

    void setMostLines(int count);

Q_SIGNALS:
    /// The lines may be others.
    void wrapped();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::unique_ptr<QTextLayout> lines(int width) const;

    int m_mostLines = unlimited;
};

} // namespace pobblewig
