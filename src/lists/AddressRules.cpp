#include "lists/AddressRules.h"

#include "core/Reporting.h"
#include "lists/EntryListModel.h"

namespace varlo {

namespace {

const QString kForbidden = QStringLiteral("!#$%^&*()=+{}[]|\\;:'/?>,< \"");
constexpr qsizetype kShortest = 6;

} // namespace

bool PassesAddressRules(const QString &address) {
    const qsizetype at = address.indexOf(u'@');
    if (at < 0 || address.size() < kShortest)
        return false;
    const QStringView domain = QStringView(address).sliced(at + 1);
    if (domain.contains(u'@') || !domain.contains(u'.'))
        return false;
    // Control characters beside the forbidden ones: an address with a line break in it would be two lines of
    // a file.
    const bool hasForbidden = std::any_of(address.begin(), address.end(),
                                          [](QChar c) { return c < u' ' || kForbidden.contains(c); });
    return !hasForbidden && !address.contains(QStringLiteral(".."));
}

bool IsValidAddress(Session &session, const QString &address, bool Silent) {
    const bool valid = PassesAddressRules(address);
    if (!valid && !Silent)
        session.Boxes.MsgBox(QStringLiteral("The e-mail address [") + address +
                                 QStringLiteral("] is invalid"),
                             BoxButtons::Ok, BoxIcon::Critical, kErrorTitle);
    return valid;
}

bool IsNewAddress(Session &session, const QString &address, const EntryListModel &listBox) {
    if (listBox.FindFirst(address) < 0)
        return true;
    StatusMessage(session, QStringLiteral("Duplicate address [") + address + QStringLiteral("] ignored"));
    return false;
}

QString CleanTypedAddress(const QString &text) {
    const QString trimmed = text.trimmed();
    const QString prefix = QStringLiteral("mailto:");
    return trimmed.startsWith(prefix) ? trimmed.sliced(prefix.size()) : trimmed;
}

} // namespace varlo
