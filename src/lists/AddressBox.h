// The box in which the operator types an address.
#pragma once

#include <QLineEdit>

namespace varlo {

// Holds its text as CleanTypedAddress leaves it, at every moment. A blank typed at either end is not taken up at
// all, so that caret and undo stay as they are; what else brings one (a pasted text) is cleaned behind it, which
// keeps the caret and forgets the undo.
class AddressBox : public QLineEdit {
    Q_OBJECT

public:
    explicit AddressBox(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    bool IsAtEnd() const;
    void Clean();
    void ShowPlaceholder();
};

} // namespace varlo
