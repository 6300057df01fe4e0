// The tinted band behind the description of a preferences page.
#pragma once

#include <QWidget>

class QLabel;

namespace varlo {

// Drawn by itself from the palette, in light and dark: a frame with the background of a text box would look
// like something to type in.
class DescriptionBand : public QWidget {
    Q_OBJECT

public:
    explicit DescriptionBand(QLabel *words);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace varlo
