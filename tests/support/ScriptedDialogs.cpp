#include "support/ScriptedDialogs.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo::test {

void PrintTo(const ShownBox &box, std::ostream *out) {
    *out << "box ";
    PrintTo(box.Title, out);
    *out << " saying ";
    PrintTo(box.Text, out);
    *out << " (buttons " << static_cast<int>(box.Buttons) << ", icon " << static_cast<int>(box.Icon) << ')';
}

ScriptedDialogs::~ScriptedDialogs() {
    EXPECT_TRUE(Answers.empty()) << "a scripted answer was never asked for";
    EXPECT_TRUE(Inputs.empty()) << "a scripted input was never asked for";
    EXPECT_TRUE(Files.empty()) << "a scripted file was never asked for";
}

BoxAnswer ScriptedDialogs::MsgBox(const QString &text, BoxButtons buttons, BoxIcon icon,
                                  const QString &title) {
    Shown.push_back({title, text, buttons, icon});
    if (OnBox)
        OnBox(text);
    if (buttons == BoxButtons::Ok)
        return BoxAnswer::Ok;
    if (Answers.empty()) {
        ADD_FAILURE() << "unexpected question: " << text.toStdString();
        return buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Cancel;
    }
    const BoxAnswer answer = Answers.front();
    Answers.pop_front();
    return answer;
}

BoxAnswer ScriptedDialogs::AskToDestroy(const QString &text, BoxIcon icon, const QString &title) {
    Destroying << text;
    return MsgBox(text, BoxButtons::YesNo, icon, title);
}

QString ScriptedDialogs::InputBox(const QString &prompt, const QString &title, const QString &text) {
    Asked.push_back({prompt, title, text});
    if (OnInput)
        OnInput(title);
    if (Inputs.empty()) {
        ADD_FAILURE() << "unexpected input box: " << prompt.toStdString();
        return {};
    }
    const QString input = Inputs.front();
    Inputs.pop_front();
    return input;
}

QString ScriptedDialogs::NextFile(const QString &filter, const QString &folder, const QString &title) {
    FileBoxes.push_back({filter, title, folder});
    if (Files.empty()) {
        ADD_FAILURE() << "unexpected file box: " << title.toStdString();
        return {};
    }
    const QString file = Files.front();
    Files.pop_front();
    return file;
}

QString ScriptedDialogs::OpenFileBox(const QString &filter, const QString &folder, const QString &title) {
    return NextFile(filter, folder, title);
}

QString ScriptedDialogs::SaveFileBox(const QString &filter, const QString &folder, const QString &title) {
    return NextFile(filter, folder, title);
}

QString ScriptedDialogs::FolderBox(const QString &folder, const QString &title) {
    return NextFile(QString(), folder, title);
}

bool ScriptedDialogs::OpenUrl(const QUrl &url) {
    Opened.push_back(url);
    return true;
}

QStringList ScriptedDialogs::Texts() const {
    QStringList texts;
    for (const ShownBox &box : Shown)
        texts << box.Text;
    return texts;
}

} // namespace varlo::test
