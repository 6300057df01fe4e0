// The help page of the Preferences window names every control of it.

#include "core/TextFile.h"
#include "prefs/OptionsFixture.h"

namespace varlo::test {
namespace {

// As the help writes it: in bold, without the mark of the access key and a closing colon.
QString InHelp(QString caption) {
    caption.remove(u'&');
    if (caption.endsWith(u':'))
        caption.chop(1);
    return u"<b>"_s + caption.toHtmlEscaped() + u"</b>"_s;
}

QString HelpPage() {
    return DecodeText(ReadFile(QString::fromUtf8(VARLO_HELP_FOLDER) + u"/options.html"_s)).simplified();
}

QStringList CaptionsOfTheFields(const frmOptions &window) {
    QStringList captions;
    for (const auto *button : window.findChildren<QAbstractButton *>())
        if (!button->text().isEmpty())
            captions << button->text();
    for (const auto *label : window.findChildren<QLabel *>())
        if (label->buddy())
            captions << label->text();
    return captions;
}

TEST_F(frmOptionsTest, TheHelpNamesEveryControlOfThePages) {
    const QString page = HelpPage();
    const QStringList captions = CaptionsOfTheFields(frmOptions(session));
    EXPECT_GE(captions.size(), 20);
    for (const QString &caption : captions)
        EXPECT_TRUE(page.contains(InHelp(caption))) << caption.toStdString() << " is not in options.html";
}

TEST_F(frmOptionsTest, TheHelpNamesEveryPage) {
    const frmOptions window(session);
    const auto *pages = Find<QListWidget>(window, "lstOptions");
    for (int row = 0; row < pages->count(); ++row)
        EXPECT_TRUE(HelpPage().contains(u">"_s + pages->item(row)->text() + u"</h2>"_s)) << row;
}

} // namespace
} // namespace varlo::test
