// Every window of the program, made as the operator meets it, for tests that look at all of them.
#pragma once

#include "compose/ComposeHost.h"
#include "core/Literals.h"
#include "support/FakeMailer.h"
#include "support/TestProfile.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace varlo::test {

// A window with everything in it that can be enabled, enabled: an open list, selections, a typed address.
class OpenWindow {
public:
    // `name` is one of WindowNames().
    explicit OpenWindow(const std::string &name);
    ~OpenWindow();
    OpenWindow(const OpenWindow &) = delete;
    OpenWindow &operator=(const OpenWindow &) = delete;

    QWidget &Window() const { return *window_; }
    QWidget *operator->() const { return window_.get(); }
    // The controls of that type that are on the screen.
    template<typename Control> QList<Control *> Visible() const {
        QList<Control *> visible;
        for (Control *control : window_->findChildren<Control *>())
            if (control->isVisible() && control->window() == window_.get())
                visible << control;
        return visible;
    }
    void Show() const;

private:
    struct Host : ComposeHost {
        QStringList ListNames() const override { return {u"Members"_s, u"News"_s}; }
        QString CurrentListName() const override { return u"News"_s; }
        QStringList SelectedAddresses() const override { return {u"ann@example.org"_s}; }
        void Offer(const PendingRequest &) override {}
    };

    std::unique_ptr<QWidget> Make(const std::string &name);
    std::unique_ptr<QWidget> MakeMain();
    std::unique_ptr<QWidget> MakeOptions(int page);
    std::unique_ptr<QWidget> MakeCompose();
    std::unique_ptr<QWidget> MakeAttach();

    TestProfile profile_;
    FakeMailers mailers_;
    Host host_;
    std::unique_ptr<QWidget> window_;
};

// The windows by their class names; each page of the preferences counts as one: "frmOptions_0".
std::vector<std::string> WindowNames();

} // namespace varlo::test
