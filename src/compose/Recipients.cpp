#include "compose/Recipients.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/Reporting.h"
#include "core/TextFile.h"

#include <QCoreApplication>
#include <QPointer>

namespace varlo {

RecipientSource RecipientSourceAt(qsizetype index, qsizetype listCount) {
    if (index >= 0 && index < listCount)
        return RecipientSource::OneList;
    if (index == listCount + 1)
        return RecipientSource::AllLists;
    if (index == listCount + 2)
        return RecipientSource::SelectLists;
    if (index == listCount + 3)
        return RecipientSource::CurrentSelection;
    return RecipientSource::Separator;
}

QStringList RecipientSourceTexts(const QStringList &listNames, bool withSelection) {
    QStringList texts = listNames;
    texts << QString(61, u'-') << u"All Mailing Lists"_s << u"Select Lists..."_s;
    if (withSelection)
        texts << u"Current Selection"_s;
    return texts;
}

QString ListNamesText(const QStringList &names) {
    return names.join(u", "_s);
}

QString RecipientCountText(qsizetype count) {
    return QString::number(count) + u" Recipients"_s;
}

Recipients::Recipients(Session &session, QObject *parent) : QObject(parent), session_(session) {
}

void Recipients::Choose(const RecipientChoice &choice) {
    const int number = ++choices_;
    const QPointer<Recipients> self(this);
    const auto isOver = [&] { return !self || choices_ != number; };
    ErrorTrap trap(session_, u"Compose.cmbTo"_s);
    addresses_.clear();
    trap([this] { Status(u"Loading recipients..."_s); });
    QCoreApplication::processEvents(); // shows the text before the files are read
    if (isOver())
        return;
    const RecipientSource source = RecipientSourceAt(choice.Index, choice.ListNames.size());
    if (source == RecipientSource::CurrentSelection)
        addresses_ = choice.SelectedAddresses;
    const QStringList lists = ListsOf(choice, source);
    for (qsizetype i = 0; i < lists.size() && !isOver(); ++i)
        trap([&] { ReadList(lists.at(i)); });
    if (isOver())
        return;
    Q_EMIT CountChanged(RecipientCountText(addresses_.size()));
    trap([this] { Status(u"Recipients loaded"_s); });
}

// The lists to be read for a choice; tells the window which they are.
QStringList Recipients::ListsOf(const RecipientChoice &choice, RecipientSource source) {
    switch (source) {
    case RecipientSource::OneList: {
        const QString name = choice.ListNames.at(choice.Index);
        Q_EMIT ToolTipChanged(name);
        return {name};
    }
    case RecipientSource::AllLists:
        Q_EMIT ToolTipChanged(ListNamesText(choice.ListNames));
        return choice.ListNames;
    case RecipientSource::SelectLists:
        return choice.PickLists();
    case RecipientSource::CurrentSelection:
        Q_EMIT ToolTipChanged(choice.CurrentListName + u" (Selected addresses only)"_s);
        break;
    case RecipientSource::Separator:
        break;
    }
    return {};
}

void Recipients::ReadList(const QString &name) {
    addresses_ += ReadLines(ProfileLayout::ListFile(session_, name));
}

void Recipients::Status(const QString &text) {
    Q_EMIT StatusChanged(text);
    StatusMessage(session_, text, false, true);
}

} // namespace varlo
