// A label that is clicked like a link, by mouse or by keyboard.
#pragma once

#include <QLabel>

namespace varlo {

// Underlined plain text in a link colour that suits the theme; red while the mouse button is down over it.
class HyperlinkLabel : public QLabel {
    Q_OBJECT

public:
    explicit HyperlinkLabel(const QString &text, QWidget *parent = nullptr);

Q_SIGNALS:
    // The left button was pressed and released over the text, or Enter or the space bar pressed on it.
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void ShowColour();

    bool down_ = false;
};

} // namespace varlo
