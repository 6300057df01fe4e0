// A profile manager on a program folder of the test's own.
#pragma once

#include "app/frmProfile.h"
#include "core/Literals.h"
#include "core/Session.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "support/ScriptedDialogs.h"

#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

namespace varlo::test {

inline const QString kNotFound =
    u"The selected profile could not be found. It may have been renamed, moved or deleted."_s;

class frmProfileTest : public testing::Test {
protected:
    // A program folder with these profiles; no "profiles" folder at all without any.
    void MakeProfiles(const QStringList &names) {
        for (const QString &name : names)
            ASSERT_TRUE(QDir(folder_.path()).mkpath(u"profiles/"_s + name));
    }
    void WriteGlobalIni(const QByteArray &autoStart, const QByteArray &current) {
        WriteFile(folder_.filePath(u"global.ini"_s),
                  "[Profiles]\r\nAutoStart=" + autoStart + "\r\nProfileCurrent=" + current + "\r\n");
    }
    QByteArray GlobalIni() const {
        const QString path = folder_.filePath(u"global.ini"_s);
        return QFile::exists(path) ? ReadFile(path) : QByteArray();
    }
    QStringList Folders() const {
        return QDir(session_.ProfilesFolder())
            .entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
    }

    void Load(const QStringList &arguments = {}) {
        window_ = std::make_unique<frmProfile>(session_, arguments);
        QObject::connect(window_.get(), &frmProfile::ProfileOpened, window_.get(), [this] {
            ++opened_;
            iniAtOpening_ = GlobalIni();
        });
    }
    void Start(const QStringList &arguments = {}) {
        Load(arguments);
        window_->CheckAutoStart();
    }
    template<typename Control> Control *Find(const char *name) const {
        auto *control = window_->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void Click(const char *button) const { Find<QPushButton>(button)->click(); }
    QComboBox *List() const { return Find<QComboBox>("cmbProfiles"); }
    QStringList Listed() const {
        QStringList names;
        for (int i = 0; i < List()->count(); ++i)
            names << List()->itemText(i);
        return names;
    }
    QString Selected() const { return List()->currentText(); }
    QStringList Enabled() const {
        QStringList names;
        for (const char *name :
             {"cmbProfiles", "cmdProfileNew", "cmdProfileRename", "cmdProfileDelete", "cmdGo"})
            if (Find<QWidget>(name)->isEnabled())
                names << QString::fromLatin1(name);
        return names;
    }
    // The title of the only box shown, or all of them.
    QStringList BoxTitles() const {
        QStringList titles;
        for (const ShownBox &box : boxes_.Shown)
            titles << box.Title;
        return titles;
    }

    QTemporaryDir folder_;
    ScriptedDialogs boxes_;
    Session session_{folder_.path(), boxes_};
    std::unique_ptr<frmProfile> window_;
    int opened_ = 0;
    QByteArray iniAtOpening_;
};

inline const QStringList kAllEnabled{u"cmbProfiles"_s, u"cmdProfileNew"_s, u"cmdProfileRename"_s,
                                     u"cmdProfileDelete"_s, u"cmdGo"_s};
inline const QStringList kThree{u"Alpha"_s, u"Beta"_s, u"Gamma"_s};

} // namespace varlo::test
