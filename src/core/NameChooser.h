// A drop-down list of names, which can be longer than its place.
#pragma once

#include <QComboBox>

namespace varlo {

// Its width does not follow the longest name. One that does not fit ends in "..." and has its whole as a tooltip.
class NameChooser : public QComboBox {
    Q_OBJECT

public:
    enum class ToolTip { OfName, OfCaller };

    // `columns`: how many letters of an average width fit at least. With OfCaller the tooltip is left alone, for
    // somebody who tells more than the name.
    explicit NameChooser(int columns, QWidget *parent = nullptr, ToolTip toolTip = ToolTip::OfName);

    // The current name as it fits.
    QString ShownText() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void UpdateToolTip();

    const ToolTip toolTip_;
};

} // namespace varlo
