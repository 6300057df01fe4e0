#include "lists/UnsavedOffer.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/modPublic.h"
#include "lists/OpenList.h"
#include "lists/UnsavedList.h"

#include <QPushButton>

namespace varlo {

UnsavedOffer::UnsavedOffer(Session &session, OpenList &list, QWidget *parent)
    : NoticeBar("barUnsaved", parent), session_(session), list_(list) {
    const QPushButton *restore =
        AddButton("cmdUnsavedRestore", u"Bring Bac&k"_s, u"Put the kept changes into the list"_s);
    const QPushButton *discard = AddButton("cmdUnsavedDiscard", u"&Forget"_s, u"Delete the kept changes"_s);
    connect(restore, &QPushButton::clicked, this, &UnsavedOffer::cmdUnsavedRestore_Click);
    connect(discard, &QPushButton::clicked, this, &UnsavedOffer::cmdUnsavedDiscard_Click);
    connect(&list_, &OpenList::Changed, this, &UnsavedOffer::Refresh);
    connect(&list_, &OpenList::Loaded, this, [this] {
        shownFor_.clear(); // the same list anew, too
        Refresh();
    });
}

void UnsavedOffer::Refresh() {
    const QString &name = list_.Name();
    if (name == shownFor_)
        return;
    shownFor_ = name;
    if (!name.isEmpty() && PathExists(UnsavedList::Path(session_, name)))
        Say(u"Changes to list ["_s + name + u"] were not saved when the program had to end."_s);
    else
        hide();
}

void UnsavedOffer::cmdUnsavedRestore_Click() {
    Trapped(session_, u"Main.cmdUnsavedRestore"_s, [this] {
        hide();
        UnsavedList::Restore(session_, list_);
        StatusMessage(session_, u"Restored unsaved changes of ["_s + list_.Name() + u"]"_s);
    });
}

void UnsavedOffer::cmdUnsavedDiscard_Click() {
    Trapped(session_, u"Main.cmdUnsavedDiscard"_s, [this] {
        hide();
        UnsavedList::Discard(session_, list_.Name());
        StatusMessage(session_, u"Discarded unsaved changes of ["_s + list_.Name() + u"]"_s);
    });
}

} // namespace varlo
