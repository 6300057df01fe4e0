#include "lists/ListExport.h"

#include "core/Ascii.h"
#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "lists/ListUndo.h"

#include <QFileInfo>

namespace varlo {

namespace {

constexpr qsizetype kLongestCardLine = 75; // bytes, without its end

QString OriginText(RequestOrigin origin) {
    switch (origin) {
    case RequestOrigin::Typed:
        return u"typed"_s;
    case RequestOrigin::Clipboard:
        return u"clipboard"_s;
    case RequestOrigin::Mailbox:
        return u"mailbox"_s;
    case RequestOrigin::FailedDelivery:
        return u"delivery failed"_s;
    case RequestOrigin::Import:
        return u"import"_s;
    case RequestOrigin::List:
        break;
    }
    return {};
}

QString KindText(RequestKind kind) {
    if (kind == RequestKind::Unknown)
        return u"unknown"_s;
    return kind == RequestKind::Subscribe ? u"subscribe"_s : u"unsubscribe"_s;
}

// A request has its sign in front, as in the list box, and behind a tab where it came from.
QString Line(const ExportEntry &entry) {
    const QString sign = entry.Request == u"subscribe"     ? u"+"_s
                         : entry.Request == u"unsubscribe" ? u"-"_s
                                                           : QString();
    return sign + entry.Address + (entry.Origin.isEmpty() ? QString() : u'\t' + entry.Origin) + u"\r\n"_s;
}

// In quotes where a program would take it for more than one cell.
QString Cell(const QString &text) {
    const auto parts = [](QChar c) { return c == u',' || c == u';' || c == u'"' || c < u' '; };
    if (std::none_of(text.begin(), text.end(), parts))
        return text;
    return u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
}

// Lines of a card are short; what goes on begins with a blank. A character is never cut.
QString Folded(const QString &line) {
    QString folded;
    qsizetype bytes = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const bool isPair = line[i].isHighSurrogate() && i + 1 < line.size();
        const QString letter = line.mid(i, isPair ? 2 : 1);
        const qsizetype size = letter.toUtf8().size();
        if (bytes + size > kLongestCardLine) {
            folded += u"\r\n "_s;
            bytes = 1;
        }
        folded += letter;
        bytes += size;
        i += isPair ? 1 : 0;
    }
    return folded + u"\r\n"_s;
}

QString Escaped(QString text) {
    text.replace(u'\\', u"\\\\"_s).replace(u',', u"\\,"_s).replace(u';', u"\\;"_s);
    return text.replace(u'\n', u"\\n"_s).remove(u'\r');
}

QString Card(const ExportEntry &entry) {
    const QString address = Escaped(entry.Address);
    QString card = u"BEGIN:VCARD\r\nVERSION:3.0\r\n"_s + Folded(u"FN:"_s + address) +
                   Folded(u"N:"_s + address + u";;;;"_s) + Folded(u"EMAIL;TYPE=INTERNET:"_s + address);
    if (!entry.Request.isEmpty())
        card += Folded(u"NOTE:"_s + Escaped(entry.Origin.isEmpty() ? entry.Request
                                                                   : entry.Request + u", "_s + entry.Origin));
    return card + u"END:VCARD\r\n"_s;
}

QString Table(const QList<ExportEntry> &entries) {
    const auto isRequest = [](const ExportEntry &entry) { return !entry.Request.isEmpty(); };
    const bool areRequests = std::any_of(entries.begin(), entries.end(), isRequest);
    QString table = areRequests ? u"E-mail,Request,Origin\r\n"_s : u"E-mail\r\n"_s;
    for (const ExportEntry &entry : entries) {
        table += Cell(entry.Address);
        if (areRequests)
            table += u',' + Cell(entry.Request) + u',' + Cell(entry.Origin);
        table += u"\r\n"_s;
    }
    return table;
}

QString FilterOf(ExportForm form) {
    const QString what = form == ExportForm::Text  ? u"Text"_s
                         : form == ExportForm::Csv ? u"Tables"_s
                                                   : u"Address cards"_s;
    const QChar nul(u'\0');
    return what + nul + u'*' + ExportExtension(form) + nul + u"All Files"_s + nul + u"*.*"_s + nul;
}

QString WithExtension(const QString &path, ExportForm form) {
    const QString longer = path + ExportExtension(form);
    return QFileInfo(path).suffix().isEmpty() && !PathExists(path) && !PathExists(longer) ? longer : path;
}

} // namespace

QList<ExportEntry> EntriesOf(const QStringList &addresses) {
    QList<ExportEntry> entries;
    entries.reserve(addresses.size());
    for (const QString &address : addresses)
        entries.append({address, QString(), QString()});
    return entries;
}

QList<ExportEntry> EntriesOf(const QList<PendingRequest> &requests) {
    QList<ExportEntry> entries;
    entries.reserve(requests.size());
    for (const PendingRequest &request : requests)
        entries.append({request.Address, KindText(request.Kind), OriginText(request.Origin)});
    return entries;
}

QString ExportText(const QList<ExportEntry> &entries, ExportForm form) {
    if (form == ExportForm::Csv)
        return Table(entries);
    QString text;
    for (const ExportEntry &entry : entries)
        text += form == ExportForm::VCard ? Card(entry) : Line(entry);
    return text;
}

QByteArray ExportBytes(const QList<ExportEntry> &entries, ExportForm form) {
    const QString text = ExportText(entries, form);
    if (form == ExportForm::Text)
        return EncodeText(text);
    const bool needsMark = form == ExportForm::Csv && !IsAscii(text);
    return (needsMark ? QByteArray("\xEF\xBB\xBF") : QByteArray()) + text.toUtf8();
}

QString ExportExtension(ExportForm form) {
    if (form == ExportForm::Text)
        return u".txt"_s;
    return form == ExportForm::Csv ? u".csv"_s : u".vcf"_s;
}

bool ExportToFile(Session &session, const QList<ExportEntry> &entries, ExportForm form) {
    const QString chosen = session.Boxes.SaveFileBox(FilterOf(form), QString(), u"Export"_s);
    if (chosen.isEmpty())
        return false;
    const QString path = WithExtension(chosen, form);
    return Trapped(session, u"Export.cmdExportSave"_s, [&] {
        WriteFile(path, ExportBytes(entries, form));
        StatusMessage(session, u"Exported "_s + AddressesText(entries.size()).toLower() + u" to ["_s +
                                   QFileInfo(path).fileName() + u']');
    });
}

} // namespace varlo
