// A small program with everything that the driver must be able to do. It knows nothing of the driver.

#include "core/Literals.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

namespace {

template<typename Control> Control *Named(Control *control, const char *name) {
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

class DropLabel : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { event->setAccepted(event->mimeData()->hasUrls()); }
    void dropEvent(QDropEvent *event) override {
        QStringList names;
        for (const QUrl &url : event->mimeData()->urls())
            names << url.fileName();
        setText(names.join(u','));
    }
};

class frmSample : public QMainWindow {
public:
    frmSample() {
        setObjectName(u"frmSample"_s);
        setWindowTitle(u"Sample"_s);
        auto *area = new QWidget;
        layout_ = new QVBoxLayout(area);
        setCentralWidget(area);
        AddControls();
        AddMenu();
        AddBoxes();
    }

private:
    void AddControls() {
        layout_->addWidget(result_);
        auto *name = Named(new QLineEdit(u"old"_s), "txtName");
        auto *body = Named(new QPlainTextEdit, "txtBody");
        auto *combo = Named(new QComboBox, "cmbList");
        combo->addItems({u"one"_s, u"two"_s, u"three"_s});
        auto *check = Named(new QCheckBox(u"A rather &long caption of a check box"_s), "chkOne");
        auto *disabled = Named(new QPushButton(u"Never"_s), "cmdNever");
        disabled->setEnabled(false);
        auto *drop = Named(new DropLabel(u"drop here"_s), "lblDrop");
        drop->setAcceptDrops(true);
        for (QWidget *widget : std::initializer_list<QWidget *>{name, body, combo, check, disabled, drop})
            layout_->addWidget(widget);
        AddList();
        connect(combo, &QComboBox::activated, this, [this, combo] { Show(combo->currentText()); });
        connect(check, &QCheckBox::clicked, this, [this](bool on) { Show(on ? u"on"_s : u"off"_s); });
    }

    void AddList() {
        auto *list = Named(new QListView, "lstItems_0");
        QStringList items;
        for (int i = 0; i < 1000; ++i)
            items << u"item %1"_s.arg(i);
        list->setModel(new QStringListModel(items, list));
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        list->setEditTriggers(QAbstractItemView::NoEditTriggers);
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        layout_->addWidget(list);
        connect(list, &QListView::customContextMenuRequested, this, [this, list](const QPoint &place) {
            QMenu menu;
            Named(menu.addAction(u"Edit"_s), "mnuEdit");
            Named(menu.addAction(u"Remove"_s), "mnuRemove");
            const QAction *chosen = menu.exec(list->viewport()->mapToGlobal(place));
            Show(chosen ? chosen->text() : u"nothing"_s);
        });
        connect(list, &QListView::doubleClicked, this,
                [this](const QModelIndex &index) { Show(u"opened "_s + index.data().toString()); });
    }

    void AddMenu() {
        QMenu *menu = menuBar()->addMenu(u"File"_s);
        QAction *open = Named(menu->addAction(u"Open..."_s), "mnuOpen");
        open->setShortcut(QKeySequence(u"Ctrl+O"_s));
        connect(open, &QAction::triggered, this, [this] { Show(u"open"_s); });
        Named(menu->addAction(u"Off"_s), "mnuOff")->setEnabled(false);
    }

    void AddButton(const char *name, std::function<void()> click) {
        auto *button = Named(new QPushButton(QString::fromLatin1(name)), name);
        layout_->addWidget(button);
        connect(button, &QPushButton::clicked, this, std::move(click));
    }

    void AddBoxes() {
        AddButton("cmdAsk", [this] {
            if (QMessageBox::question(this, u"First"_s, u"Go on?"_s) == QMessageBox::Yes)
                QMessageBox::information(this, u"Second"_s, u"Going on."_s);
            Show(u"asked"_s);
        });
        AddButton("cmdInput", [this] {
            Show(QInputDialog::getText(this, u"Input"_s, u"Name:"_s, QLineEdit::Normal, u"preset"_s));
        });
        AddButton("cmdFile", [this] { Show(QFileDialog::getOpenFileName(this, u"Choose"_s)); });
        AddButton("cmdBusy", [this] {
            for (int i = 0; i < 200'000 && isVisible(); ++i) {
                Show(u"busy %1"_s.arg(i));
                QCoreApplication::processEvents();
            }
        });
    }

    void Show(const QString &text) { result_->setText(text); }

    QVBoxLayout *layout_ = nullptr;
    QLabel *result_ = Named(new QLabel(u"ready"_s), "lblResult");
};

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    if (QApplication::arguments().contains(u"--refuse"_s)) {
        QMessageBox::critical(nullptr, u"Refused"_s, u"Not today."_s);
        return 3;
    }
    frmSample window;
    window.show();
    return QApplication::exec();
}
