// A drop-down list of names, which can be longer than its place.
#pragma once

#include <QComboBox>

#include <optional>

namespace varlo {

// Its width does not follow the longest name. One that does not fit ends in "..." and has its whole as a tooltip.
// The wheel chooses while the keyboard does, so that nobody chooses in passing.
class NameChooser : public QComboBox {
    Q_OBJECT

public:
    // `columns`: how many letters of an average width fit at least. `toolTip` is shown while the name fits; without
    // a value the tooltip is left alone, for somebody who tells more than the name.
    explicit NameChooser(int columns, QWidget *parent = nullptr,
                         const std::optional<QString> &toolTip = QString());

    // The current name as it fits.
    QString ShownText() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void UpdateToolTip();

    const std::optional<QString> toolTip_;
};

} // namespace varlo
