#include "compose/Recipients.h"

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
    texts << QString(61, u'-') << QStringLiteral("All Mailing Lists") << QStringLiteral("Select Lists...");
    if (withSelection)
        texts << QStringLiteral("Current Selection");
    return texts;
}

QString ListNamesText(const QStringList &names) {
    return names.join(QStringLiteral(", "));
}

QString RecipientCountText(qsizetype count) {
    return QString::number(count) + QStringLiteral(" Recipients");
}

Recipients::Recipients(Session &session, QObject *parent) : QObject(parent), session_(session) {
}

void Recipients::Choose(const RecipientChoice &choice) {
    const int number = ++choices_;
    const QPointer<Recipients> self(this);
    const auto isOver = [&] { return !self || choices_ != number; };
    ErrorTrap trap(session_, QStringLiteral("Compose.cmbTo"));
    addresses_.clear();
    trap([this] { Status(QStringLiteral("Loading recipients...")); });
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
    trap([this] { Status(QStringLiteral("Recipients loaded")); });
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
        Q_EMIT ToolTipChanged(choice.CurrentListName + QStringLiteral(" (Selected addresses only)"));
        break;
    case RecipientSource::Separator:
        break;
    }
    return {};
}

void Recipients::ReadList(const QString &name) {
    addresses_ += ReadLines(session_.ProfileFile(QStringLiteral("lists"), name + QStringLiteral(".vlo")));
}

void Recipients::Status(const QString &text) {
    Q_EMIT StatusChanged(text);
    StatusMessage(session_, text, false, true);
}

} // namespace varlo
