// Nothing is cut off when letters are larger or texts longer than here.

#include "app/EveryWindow.h"
#include "core/Literals.h"
#include "core/StatusLabel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

struct Look {
    std::string Window;
    int FontPercent;
    bool LongTexts;
};

void PrintTo(const Look &look, std::ostream *out) {
    *out << look.Window << ' ' << look.FontPercent << "%" << (look.LongTexts ? " long texts" : "");
}

// The application's font for the length of a test.
class ScaledFont {
public:
    explicit ScaledFont(int percent) {
        QFont larger = usual_;
        larger.setPointSizeF(usual_.pointSizeF() * percent / 100);
        QApplication::setFont(larger);
    }
    ~ScaledFont() { QApplication::setFont(usual_); }
    ScaledFont(const ScaledFont &) = delete;
    ScaledFont &operator=(const ScaledFont &) = delete;

private:
    const QFont usual_ = QApplication::font();
};

// As long as another language would need: by 40 per cent.
QString Longer(const QString &text) {
    return text + QString((2 * text.size() + 4) / 5, u'e');
}

bool IsCaption(const QLabel *label) {
    return !qobject_cast<const StatusLabel *>(label) && !label->text().isEmpty() &&
           !label->objectName().contains(u"lblHyperlink"_s);
}

// Lets a change go through all layouts: each one tells the next.
void Settle() {
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
}

class FitTest : public testing::TestWithParam<Look> {
protected:
    void LengthenTexts() const {
        for (auto *button : window->findChildren<QAbstractButton *>())
            button->setText(button->text().isEmpty() ? QString() : Longer(button->text()));
        for (auto *label : window->findChildren<QLabel *>())
            if (IsCaption(label))
                label->setText(Longer(label->text()));
    }
    // What is clipped, with the room that it has and the room that it needs.
    QStringList Clipped() const;
    bool HasRoom(const QWidget *control) const;

    const ScaledFont font{GetParam().FontPercent};
    OpenWindow window{GetParam().Window};
};

// A status line elides by design.
bool MustBeWhole(const QWidget *control) {
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return IsCaption(label) || !label->pixmap(Qt::ReturnByValue).isNull();
    return qobject_cast<const QAbstractButton *>(control) || qobject_cast<const QComboBox *>(control);
}

QSize Needed(const QWidget *control) {
    // A drop-down list asks for its longest entry but shows any width; its least width is what it asks for
    // when told so.
    return qobject_cast<const QComboBox *>(control) ? control->minimumSizeHint() : control->sizeHint();
}

bool FitTest::HasRoom(const QWidget *control) const {
    const QSize needed = Needed(control);
    const QRect inWindow(control->mapTo(&window.Window(), QPoint()), control->size());
    return control->width() >= needed.width() && control->height() >= needed.height() &&
           window->rect().contains(inWindow) && control->parentWidget()->rect().contains(control->geometry());
}

QString Text(QSize size) {
    return u"%1x%2"_s.arg(size.width()).arg(size.height());
}

QStringList FitTest::Clipped() const {
    QStringList clipped;
    for (const QWidget *control : window.Visible<QWidget>())
        if (MustBeWhole(control) && !HasRoom(control))
            clipped << control->objectName() + u" has "_s + Text(control->size()) + u" needs "_s +
                           Text(Needed(control));
    return clipped;
}

TEST_P(FitTest, NothingIsCutOff) {
    if (GetParam().LongTexts)
        LengthenTexts();
    window.Show();
    Settle();
    EXPECT_EQ(Clipped(), QStringList()) << "at its usual size";
    window->resize(1, 1); // the layout keeps it larger
    Settle();
    EXPECT_EQ(Clipped(), QStringList()) << "at its smallest";
}

TEST_P(FitTest, TheWindowFitsTheScreen) {
    if (GetParam().LongTexts)
        LengthenTexts();
    window.Show();
    Settle();
    const QSize least = window->minimumSizeHint();
    EXPECT_LE(least.width(), 1280);
    EXPECT_LE(least.height(), 800);
}

TEST_P(FitTest, FieldsAreHighEnoughForTheirLetters) {
    window.Show();
    window->resize(1, 1);
    Settle();
    for (const auto *field : window.Visible<QLineEdit>())
        EXPECT_GE(field->height(), field->minimumSizeHint().height()) << field->objectName().toStdString();
    for (const auto *text : window.Visible<QPlainTextEdit>())
        EXPECT_GE(text->viewport()->height(), 2 * text->fontMetrics().lineSpacing())
            << text->objectName().toStdString();
    for (const auto *list : window.Visible<QListView>())
        EXPECT_GE(list->viewport()->height(), 2 * list->fontMetrics().lineSpacing())
            << list->objectName().toStdString();
}

std::vector<Look> Looks() {
    std::vector<Look> looks;
    for (const std::string &name : WindowNames())
        for (const int percent : {100, 125, 150, 200})
            for (const bool longTexts : {false, true})
                looks.push_back({name, percent, longTexts});
    return looks;
}

INSTANTIATE_TEST_SUITE_P(Windows, FitTest, testing::ValuesIn(Looks()), [](const auto &instance) {
    return instance.param.Window + "_" + std::to_string(instance.param.FontPercent) +
           (instance.param.LongTexts ? "_Long" : "");
});

TEST(MainWindowTest, IsNotWiderThanASmallScreen) {
    const OpenWindow window("frmMain");
    window.Show();
    EXPECT_LE(window->minimumSizeHint().width(), 800);
    EXPECT_LE(window->width(), 800);
}

TEST(MainWindowTest, TheTextsOfTheStatusBarStandOnOneLine) {
    const OpenWindow window("frmMain");
    window.Show();
    const auto span = [&](const char *name) {
        const QRect place = window->findChild<QWidget *>(QString::fromLatin1(name))->geometry();
        return std::pair(place.top(), place.height());
    };
    EXPECT_EQ(span("lblStatus"), span("lblCaption"));
    EXPECT_EQ(span("lblStatusCurrent"), span("lblCaption"));
    EXPECT_EQ(span("lblStatusPending"), span("lblCaption"));
}

TEST(PreferencesTest, TheNamesOfThePagesAreWhole) {
    for (const int percent : {100, 200}) {
        const ScaledFont font(percent);
        const OpenWindow window("frmOptions_0");
        window.Show();
        const auto *pages = window->findChild<QListWidget *>(u"lstOptions"_s);
        EXPECT_GE(pages->viewport()->width(), pages->sizeHintForColumn(0)) << percent;
        EXPECT_GE(pages->viewport()->height(), pages->count() * pages->sizeHintForRow(0)) << percent;
    }
}

} // namespace
} // namespace varlo::test
