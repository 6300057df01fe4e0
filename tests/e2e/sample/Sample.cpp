// A small program with everything that the driver must be able to do. It knows nothing of the driver.

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
        setObjectName(QStringLiteral("frmSample"));
        setWindowTitle(QStringLiteral("Sample"));
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
        auto *name = Named(new QLineEdit(QStringLiteral("old")), "txtName");
        auto *body = Named(new QPlainTextEdit, "txtBody");
        auto *combo = Named(new QComboBox, "cmbList");
        combo->addItems({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
        auto *check = Named(new QCheckBox(QStringLiteral("A rather &long caption of a check box")), "chkOne");
        auto *disabled = Named(new QPushButton(QStringLiteral("Never")), "cmdNever");
        disabled->setEnabled(false);
        auto *drop = Named(new DropLabel(QStringLiteral("drop here")), "lblDrop");
        drop->setAcceptDrops(true);
        for (QWidget *widget : std::initializer_list<QWidget *>{name, body, combo, check, disabled, drop})
            layout_->addWidget(widget);
        AddList();
        connect(combo, &QComboBox::activated, this, [this, combo] { Show(combo->currentText()); });
        connect(check, &QCheckBox::clicked, this,
                [this](bool on) { Show(on ? QStringLiteral("on") : QStringLiteral("off")); });
    }

    void AddList() {
        auto *list = Named(new QListView, "lstItems_0");
        QStringList items;
        for (int i = 0; i < 1000; ++i)
            items << QStringLiteral("item %1").arg(i);
        list->setModel(new QStringListModel(items, list));
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        list->setEditTriggers(QAbstractItemView::NoEditTriggers);
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        layout_->addWidget(list);
        connect(list, &QListView::customContextMenuRequested, this, [this, list](const QPoint &place) {
            QMenu menu;
            Named(menu.addAction(QStringLiteral("Edit")), "mnuEdit");
            Named(menu.addAction(QStringLiteral("Remove")), "mnuRemove");
            const QAction *chosen = menu.exec(list->viewport()->mapToGlobal(place));
            Show(chosen ? chosen->text() : QStringLiteral("nothing"));
        });
        connect(list, &QListView::doubleClicked, this, [this](const QModelIndex &index) {
            Show(QStringLiteral("opened ") + index.data().toString());
        });
    }

    void AddMenu() {
        QMenu *menu = menuBar()->addMenu(QStringLiteral("File"));
        QAction *open = Named(menu->addAction(QStringLiteral("Open...")), "mnuOpen");
        open->setShortcut(QKeySequence(QStringLiteral("Ctrl+O")));
        connect(open, &QAction::triggered, this, [this] { Show(QStringLiteral("open")); });
        Named(menu->addAction(QStringLiteral("Off")), "mnuOff")->setEnabled(false);
    }

    void AddButton(const char *name, std::function<void()> click) {
        auto *button = Named(new QPushButton(QString::fromLatin1(name)), name);
        layout_->addWidget(button);
        connect(button, &QPushButton::clicked, this, std::move(click));
    }

    void AddBoxes() {
        AddButton("cmdAsk", [this] {
            if (QMessageBox::question(this, QStringLiteral("First"), QStringLiteral("Go on?")) ==
                QMessageBox::Yes)
                QMessageBox::information(this, QStringLiteral("Second"), QStringLiteral("Going on."));
            Show(QStringLiteral("asked"));
        });
        AddButton("cmdInput", [this] {
            Show(QInputDialog::getText(this, QStringLiteral("Input"), QStringLiteral("Name:"),
                                       QLineEdit::Normal, QStringLiteral("preset")));
        });
        AddButton("cmdFile", [this] { Show(QFileDialog::getOpenFileName(this, QStringLiteral("Choose"))); });
        AddButton("cmdBusy", [this] {
            for (int i = 0; i < 200'000 && isVisible(); ++i) {
                Show(QStringLiteral("busy %1").arg(i));
                QCoreApplication::processEvents();
            }
        });
    }

    void Show(const QString &text) { result_->setText(text); }

    QVBoxLayout *layout_ = nullptr;
    QLabel *result_ = Named(new QLabel(QStringLiteral("ready")), "lblResult");
};

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    if (QApplication::arguments().contains(QStringLiteral("--refuse"))) {
        QMessageBox::critical(nullptr, QStringLiteral("Refused"), QStringLiteral("Not today."));
        return 3;
    }
    frmSample window;
    window.show();
    return QApplication::exec();
}
