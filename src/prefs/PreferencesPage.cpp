#include "prefs/PreferencesPage.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/Settings.h"
#include "core/ValueText.h"
#include "prefs/DescriptionBand.h"
#include "prefs/PageControls.h"
#include "prefs/TypedNumber.h"

#include <QGroupBox>
#include <QPushButton>
#include <QTextDocument>

namespace varlo {

namespace {

QString Numbered(const char *name, int number) {
    return u"%1_%2"_s.arg(QString::fromLatin1(name)).arg(number);
}

QString TypedText(const QLineEdit *line) {
    return line->echoMode() == QLineEdit::Normal ? line->text().trimmed() : line->text();
}

// The box's text on one line. Its plain text would turn no-break spaces into blanks; the raw text keeps them.
QString TypedText(const QPlainTextEdit *box) {
    QString text = box->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
    return ToOneLine(text.replace(u'\n', u"\r\n"_s));
}

} // namespace

PreferencesPage::PreferencesPage(Page::Number number, const QString &title, const QString &description)
    : layout_(NewLayout<QVBoxLayout>(this)) {
    setObjectName(Numbered("picFrame", number));
    setWindowTitle(title);
    layout_->setSpacing(10);
    auto *heading = NewLabel(title);
    heading->setObjectName(Numbered("lblFrameTitle", number));
    Enlarge(heading, 1.3);
    auto *words = NewLabel(description);
    words->setObjectName(Numbered("lblFrameDesc", number));
    auto *band = new DescriptionBand(words);
    band->setObjectName(Numbered("shpFrameDesc", number));
    layout_->addWidget(heading);
    layout_->addWidget(band);
}

void PreferencesPage::Fill(const Preferences &values) const {
    for (const Field &field : fields_)
        field.Show(values);
}

void PreferencesPage::Take(Preferences &values) const {
    for (const Field &field : fields_)
        field.Take(values);
}

QWidget *PreferencesPage::FieldThatIsNoNumber() const {
    Preferences values;
    for (const Field &field : fields_) {
        try {
            field.Take(values);
        } catch (const RuntimeError &) { // the answer, not an error
            return field.Control;
        }
    }
    return nullptr;
}

QWidget *PreferencesPage::FieldThatIsTooLong() const {
    for (const Field &field : fields_)
        if (field.Length && field.Length() > kLongestText)
            return field.Control;
    return nullptr;
}

QWidget *PreferencesPage::AddGroup(Group::Number number, const QString &title) {
    auto *frame = new QGroupBox(title);
    frame->setObjectName(Numbered("fraFrame", number));
    auto *inner = new QWidget;
    inner->setObjectName(Numbered("picFrameCont", number));
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(inner);
    layout_->addWidget(frame);
    return inner;
}

QPushButton *PreferencesPage::NewTestButton(const char *name, const QString &tip) {
    QPushButton *button = NewButton(nullptr, name, u"&Test"_s, tip);
    connect(button, &QPushButton::clicked, this, &PreferencesPage::TestWanted);
    return button;
}

void PreferencesPage::AddStretch() {
    layout_->addStretch();
}

void PreferencesPage::Tie(QCheckBox *box, int Preferences::*member) {
    fields_.push_back({box,
                       [=](const Preferences &values) { box->setChecked(values.*member == 1); },
                       [=](Preferences &values) { values.*member = box->isChecked() ? 1 : 0; },
                       {}});
}

// A number that is no entry shows the first one, which it also stands for.
void PreferencesPage::Tie(QComboBox *choice, int Preferences::*member) {
    fields_.push_back({choice,
                       [=](const Preferences &values) {
                           const int row = values.*member;
                           choice->setCurrentIndex(row > 0 && row < choice->count() ? row : 0);
                       },
                       [=](Preferences &values) { values.*member = choice->currentIndex(); },
                       {}});
}

void PreferencesPage::Tie(QLineEdit *line, QString Preferences::*member) {
    fields_.push_back({line, [=](const Preferences &values) { line->setText(values.*member); },
                       [=](Preferences &values) { values.*member = TypedText(line); },
                       [=] { return TypedText(line).size(); }});
}

void PreferencesPage::Tie(QLineEdit *line, qint16 Preferences::*member) {
    fields_.push_back({line,
                       [=](const Preferences &values) { line->setText(QString::number(values.*member)); },
                       [=](Preferences &values) { values.*member = TypedNumber(line->text()); },
                       {}});
}

void PreferencesPage::Tie(QPlainTextEdit *box, QString Preferences::*member) {
    fields_.push_back({box,
                       [=](const Preferences &values) { box->setPlainText(FromOneLine(values.*member)); },
                       [=](Preferences &values) { values.*member = TypedText(box); },
                       [=] { return TypedText(box).size(); }});
}

} // namespace varlo
