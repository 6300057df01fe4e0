#include "lists/UnsavedOffer.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/modPublic.h"
#include "lists/ListStore.h"
#include "lists/UnsavedList.h"

#include <QPushButton>

namespace varlo {

UnsavedOffer::UnsavedOffer(Session &session, ListStore &lists, QWidget *parent)
    : NoticeBar("barUnsaved", parent), session_(session), lists_(lists) {
    const QPushButton *restore =
        AddButton("cmdUnsavedRestore", u"Bring Bac&k"_s, u"Put the kept changes into the list"_s);
    const QPushButton *discard = AddButton("cmdUnsavedDiscard", u"&Forget"_s, u"Delete the kept changes"_s);
    connect(restore, &QPushButton::clicked, this, &UnsavedOffer::cmdUnsavedRestore_Click);
    connect(discard, &QPushButton::clicked, this, &UnsavedOffer::cmdUnsavedDiscard_Click);
    connect(&lists_, &ListStore::ControlsOutdated, this, &UnsavedOffer::Refresh);
}

void UnsavedOffer::Refresh() {
    const QString &name = lists_.CurrentListName;
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
        UnsavedList::Restore(session_, lists_);
        StatusMessage(session_, u"Restored unsaved changes of ["_s + lists_.CurrentListName + u"]"_s);
    });
}

void UnsavedOffer::cmdUnsavedDiscard_Click() {
    Trapped(session_, u"Main.cmdUnsavedDiscard"_s, [this] {
        hide();
        UnsavedList::Discard(session_, lists_.CurrentListName);
        StatusMessage(session_, u"Discarded unsaved changes of ["_s + lists_.CurrentListName + u"]"_s);
    });
}

} // namespace varlo
