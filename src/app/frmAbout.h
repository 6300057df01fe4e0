// The About box: product, version, and the two ways to the maker.
#pragma once

#include "app/HelpTargets.h"
#include "core/Session.h"

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;

namespace varlo {

class HyperlinkLabel;

// Shown with exec(). A link that nothing opens is reported as "About.lblHyperlink".
class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(Session &session, QWidget *parent = nullptr, const ProductVersion &version = {});

private:
    void CreateControls();
    void LayOut();
    void Connect();

    void Form_Load();
    void lblHyperlink_Click(int index);

    Session &session_;
    ProductVersion version_;

    QLabel *Picture1 = nullptr;
    QLabel *lblProduct = nullptr;
    QLabel *lblVersion = nullptr;
    std::array<QLabel *, 2> lblLabel{};
    std::array<HyperlinkLabel *, 2> lblHyperlink{};
    QPushButton *cmdOK = nullptr;
};

} // namespace varlo
