#include "app/frmAbout.h"

#include "core/HyperlinkLabel.h"
#include "core/Icons.h"
#include "core/Literals.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace varlo {

namespace {

const QString kProductName = u"<ProductName>"_s;
const QString kProductVersion = u"<ProductVersion>"_s;

QLabel *NewLabel(const QString &name, const QString &text = {}) {
    auto *label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

frmAbout::frmAbout(Session &session, QWidget *parent, const ProductVersion &version)
    : QDialog(parent), session_(session), version_(version) {
    CreateControls();
    LayOut();
    Connect();
    Form_Load();
}

void frmAbout::CreateControls() {
    setObjectName(u"frmAbout"_s);
    setWindowTitle(u"About <ProductName>"_s);
    Picture1 = NewLabel(u"Picture1"_s);
    Picture1->setPixmap(Icon(u"varlo-pro").pixmap(QSize(72, 72), devicePixelRatioF()));
    lblProduct = NewLabel(u"lblProduct"_s, kProductName);
    QFont large = lblProduct->font();
    large.setPointSizeF(large.pointSizeF() * 1.7);
    large.setBold(true);
    lblProduct->setFont(large);
    lblVersion = NewLabel(u"lblVersion"_s, u"Version <ProductVersion>"_s);
    const std::array captions{u"Email:"_s, u"Website:"_s};
    const std::array targets{Product::kSupportAddress, Product::kWebsite};
    for (size_t i = 0; i < lblLabel.size(); ++i) {
        lblLabel[i] = NewLabel(u"lblLabel_%1"_s.arg(i), captions[i]);
        lblHyperlink[i] = new HyperlinkLabel(targets[i]);
        lblHyperlink[i]->setObjectName(u"lblHyperlink_%1"_s.arg(i));
    }
    cmdOK = new QPushButton(u"OK"_s);
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setDefault(true);
}

void frmAbout::LayOut() {
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(20, 20, 20, 16);
    grid->setHorizontalSpacing(16);
    grid->setColumnStretch(2, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->addWidget(Picture1, 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(lblProduct, 0, 1, 1, 2, Qt::AlignBottom);
    grid->addWidget(lblVersion, 1, 1, 1, 2, Qt::AlignTop);
    for (int i = 0; i < 2; ++i) {
        grid->addWidget(lblLabel[static_cast<size_t>(i)], 3 + i, 1);
        grid->addWidget(lblHyperlink[static_cast<size_t>(i)], 3 + i, 2);
    }
    grid->setRowMinimumHeight(5, 12);
    grid->addWidget(cmdOK, 6, 0, 1, 3, Qt::AlignRight);
    cmdOK->setFocus();
}

void frmAbout::Connect() {
    for (size_t i = 0; i < lblHyperlink.size(); ++i)
        connect(lblHyperlink[i], &HyperlinkLabel::Clicked, this,
                [this, i] { lblHyperlink_Click(static_cast<int>(i)); });
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::accept);
}

// The captions are templates, so that the product's name and version stand in one place.
void frmAbout::Form_Load() {
    setWindowTitle(windowTitle().replace(kProductName, kApplicationTitle));
    lblProduct->setText(lblProduct->text().replace(kProductName, kApplicationTitle));
    lblVersion->setText(lblVersion->text().replace(kProductVersion, LongText(version_)));
}

void frmAbout::lblHyperlink_Click(int index) {
    const QUrl target = index == 0 ? HelpTargets::SupportMail(version_) : HelpTargets::Website();
    OpenTarget(session_, target, u"About.lblHyperlink"_s);
}

} // namespace varlo
