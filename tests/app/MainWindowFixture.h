// A main window on a profile of the test's own.
#pragma once

#include "app/frmMain.h"
#include "core/Literals.h"
#include "support/FakeMailer.h"
#include "support/TestProfile.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <gtest/gtest.h>

#include <memory>

namespace varlo::test {

class frmMainTest : public testing::Test {
protected:
    ~frmMainTest() override { Discard(); }

    frmMain &Load() {
        window_ = std::make_unique<frmMain>(profile.session, mailers.Maker());
        window_->Form_Load();
        return *window_;
    }
    // Ends a window that a test has left open, whatever it would ask.
    void Discard() {
        profile.session.AppExiting = true;
        window_.reset();
    }
    template<typename Control> Control *Find(const char *name) const {
        auto *control = window_->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QStringList Rows(const char *view) const {
        const QAbstractItemModel *model = Find<QListView>(view)->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row)
            rows << model->index(row, 0).data().toString();
        return rows;
    }
    // A click, once the controls have followed the lists.
    void Click(const char *button) const {
        QCoreApplication::sendPostedEvents();
        Find<QPushButton>(button)->click();
        QCoreApplication::sendPostedEvents();
    }
    void TypeAddress(const QString &address) const {
        Find<QLineEdit>("txtAddEmail")->setText(address);
        Click("cmdEmailAdd_0");
    }
    QString Ini(const char *section, const char *key) {
        profile.session.INI.SetSection(QString::fromLatin1(section));
        return profile.session.INI.GetValue(QString::fromLatin1(key), u"(none)"_s);
    }

    TestProfile profile;
    FakeMailers mailers;
    std::unique_ptr<frmMain> window_;
};

} // namespace varlo::test
