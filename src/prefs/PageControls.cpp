#include "prefs/PageControls.h"

#include "core/Literals.h"

#include <memory>

namespace varlo {

namespace {

template<typename Control> Control *Named(const char *name, const QString &tip = {}) {
    auto *control = new Control;
    control->setObjectName(QString::fromLatin1(name));
    control->setToolTip(tip);
    return control;
}

} // namespace

QCheckBox *NewCheckBox(const char *name, const QString &caption, const QString &tip) {
    auto *box = Named<QCheckBox>(name, tip);
    box->setText(caption);
    return box;
}

QLineEdit *NewLine(const char *name, const QString &tip) {
    return Named<QLineEdit>(name, tip);
}

QLineEdit *NewNumberBox(const char *name, const QString &tip) {
    auto *box = NewLine(name, tip);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(u"0000000"_s) + 16);
    return box;
}

QPlainTextEdit *NewTextBox(const char *name) {
    auto *box = Named<QPlainTextEdit>(name);
    QFont font(QStringList{u"Courier New"_s, u"monospace"_s}, box->font().pointSize());
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    box->setFont(font);
    box->setTabChangesFocus(true);
    return box;
}

QLabel *NewLabel(const QString &caption, QWidget *buddy) {
    auto *label = new QLabel(caption);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

QLineEdit *NewPasswordBox(const char *name, const QString &tip) {
    QLineEdit *box = NewLine(name, tip);
    box->setEchoMode(QLineEdit::Password);
    box->setStyleSheet(u"lineedit-password-character: 42"_s); // "*"
    return box;
}

QComboBox *NewChoice(const char *name, const QStringList &entries, const QString &tip) {
    auto *choice = Named<QComboBox>(name, tip);
    choice->addItems(entries);
    return choice;
}

// A window that is filled changes the choice, too; the operator alone activates it.
void SuggestPorts(QComboBox *choice, QLineEdit *port, const QStringList &ports) {
    struct Choices {
        int Before = 0;
        int Now = 0;
    };
    const auto choices = std::make_shared<Choices>();
    QObject::connect(choice, &QComboBox::currentIndexChanged, port, [=](int now) {
        *choices = {choices->Now, now};
    });
    QObject::connect(choice, &QComboBox::activated, port, [=](int now) {
        if (port->text().trimmed() == ports.value(choices->Before))
            port->setText(ports.value(now));
        choices->Before = now;
    });
}

QFormLayout *NewRows(QWidget *inner) {
    auto *rows = NewLayout<QFormLayout>(inner);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return rows;
}

void AddServer(QFormLayout *rows, const QString &caption, QLineEdit *server, QLineEdit *port) {
    auto *row = new QHBoxLayout;
    row->addWidget(server, 1);
    row->addWidget(NewLabel(u"&Port:"_s, port));
    row->addWidget(port);
    rows->addRow(NewLabel(caption, server), row);
}

void Enlarge(QLabel *label, double factor) {
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(true);
    label->setFont(font);
}

} // namespace varlo
