// The Preferences window on a profile of the test's own.
#pragma once

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/Settings.h"
#include "prefs/frmOptions.h"
#include "support/KnownSettings.h"
#include "support/TestProfile.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace varlo::test {

struct frmOptionsTest : testing::Test {
    TestProfile Profile;
    Session &session = Profile.session;

    template<typename Control> static Control *Find(const frmOptions &window, const char *name) {
        auto *control = window.findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    static void Click(const frmOptions &window, const char *name) {
        QTest::mouseClick(Find<QAbstractButton>(window, name), Qt::LeftButton);
    }
    static QLineEdit *Line(const frmOptions &window, const char *name) {
        return Find<QLineEdit>(window, name);
    }
    static QPlainTextEdit *Box(const frmOptions &window, const char *name) {
        return Find<QPlainTextEdit>(window, name);
    }

    // What stands in a control, as the file would have it.
    static QString Content(const frmOptions &window, const char *name) {
        const auto *control = Find<QWidget>(window, name);
        if (const auto *box = qobject_cast<const QCheckBox *>(control))
            return box->isChecked() ? u"1"_s : u"0"_s;
        if (const auto *choice = qobject_cast<const QComboBox *>(control))
            return QString::number(choice->currentIndex());
        if (const auto *box = qobject_cast<const QPlainTextEdit *>(control))
            return box->toPlainText().replace(u'\n', u"\\n"_s);
        return Line(window, name)->text();
    }
    static void SetContent(const frmOptions &window, const char *name, const QString &text) {
        auto *control = Find<QWidget>(window, name);
        if (auto *box = qobject_cast<QCheckBox *>(control))
            box->setChecked(text == u"1"_s);
        else if (auto *choice = qobject_cast<QComboBox *>(control))
            choice->setCurrentIndex(text.toInt());
        else if (auto *texts = qobject_cast<QPlainTextEdit *>(control))
            texts->setPlainText(QString(text).replace(u"\\n"_s, u"\n"_s));
        else
            Line(window, name)->setText(text);
    }
    // What the file has under a key.
    QString Stored(const char *section, const char *key) {
        session.INI.SetSection(QString::fromLatin1(section));
        return session.INI.GetValue(QString::fromLatin1(key), u"(none)"_s);
    }
    // What is held of a setting, as the file would have it.
    QString Held(const KnownSetting &known) const {
        const auto table = Settings::Table();
        const auto row = std::find_if(table.begin(), table.end(), [&](const Setting &setting) {
            return qstrcmp(setting.Section, known.Section) == 0 && qstrcmp(setting.Key, known.Key) == 0;
        });
        return row == table.end() ? u"(no row)"_s : TextOf(session.Prefs, *row);
    }
    // The settings that the window stores.
    static std::vector<KnownSetting> StoredSettings() {
        std::vector<KnownSetting> stored;
        for (const KnownSetting &known : KnownSettings())
            if (known.Page >= 0 && *known.Section)
                stored.push_back(known);
        return stored;
    }
    // As the start of the program does.
    void LoadSettings() {
        ErrorTrap trap(session, u"Main.Load"_s);
        session.AllSettings.Load(trap);
    }

    static QList<bool> PagesShown(const frmOptions &window) {
        QList<bool> shown;
        for (int i = 0; i < 5; ++i)
            shown << Find<QWidget>(window, qPrintable(u"picFrame_%1"_s.arg(i)))->isVisible();
        return shown;
    }
    static void Show(frmOptions &window) {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
};

} // namespace varlo::test
