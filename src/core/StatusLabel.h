// A one-line label for texts that change thousands of times a second at next to no cost.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>

namespace varlo {

// Readers of text() see a new text at once. It is painted at most 30 times a second, the last one always; no
// layout runs because of it, since the label's size does not depend on its text. In the middle of long work
// that handles no events it paints itself ten times a second. A text that is too long ends in an ellipsis and
// stands whole in the tooltip. Texts are plain: markup in them is shown as it stands.
class StatusLabel : public QLabel {
    Q_OBJECT

public:
    explicit StatusLabel(QWidget *parent = nullptr);
    explicit StatusLabel(const QString &text, QWidget *parent = nullptr);

    // Hides QLabel's: call it through a StatusLabel.
    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    // A click with the left button.
    void Clicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void StoreText(const QString &text);
    void Refresh();
    void UpdateToolTip();
    QString ShownText() const;

    QTimer paintTimer_{this}; // runs while a repaint would come too soon after the last one
    QElapsedTimer sinceRefresh_;
    bool dirty_ = false;
};

} // namespace varlo
