// The controls that the pages of the Preferences window are made of.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace varlo {

// Each control gets its object name and, where it has one, its tooltip. The caller lays it out.
QCheckBox *NewCheckBox(const char *name, const QString &caption, const QString &tip);
QLineEdit *NewLine(const char *name, const QString &tip = {});
// For a port or a column: no wider than its digits, so that the eye sees what belongs in it.
QLineEdit *NewNumberBox(const char *name, const QString &tip = {});
// A box for several lines, in a fixed font; Tab leaves it.
QPlainTextEdit *NewTextBox(const char *name);
QLabel *NewLabel(const QString &caption, QWidget *buddy = nullptr);
// A password: a "*" for each character.
QLineEdit *NewPasswordBox(const char *name, const QString &tip);
// A choice among a few words. Where each goes with a port, choosing one puts its port into `port`, unless something
// else than the port of the choice before stands there.
QComboBox *NewChoice(const char *name, const QStringList &entries, const QString &tip);
void SuggestPorts(QComboBox *choice, QLineEdit *port, const QStringList &ports);

// The layout of a group's inner container; the frame around it has margins enough.
template<typename Layout> Layout *NewLayout(QWidget *inner) {
    auto *layout = new Layout(inner);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}
// One row a field, the label before it.
QFormLayout *NewRows(QWidget *inner);
// A server and, in the same row, its port.
void AddServer(QFormLayout *rows, const QString &caption, QLineEdit *server, QLineEdit *port);

void Enlarge(QLabel *label, double factor);

} // namespace varlo
