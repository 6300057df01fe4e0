// Addresses as other programs read them.
#pragma once

#include "core/PendingRequest.h"
#include "core/Session.h"

namespace varlo {

enum class ExportForm {
    Text,  // one a line
    Csv,   // a table with a header row
    VCard, // one address card each
};

// What goes out: addresses of the open list, or requests. A request's sign and where it came from go along where the
// form has a place for them.
struct ExportEntry {
    QString Address;
    QString Request; // "subscribe", "unsubscribe"; empty for an address of a list
    QString Origin;  // where a request came from; empty when that is not known
};

QList<ExportEntry> EntriesOf(const QStringList &addresses);
QList<ExportEntry> EntriesOf(const QList<PendingRequest> &requests);

// The text of a file, with CR LF at each line's end. A table of requests has columns for them.
QString ExportText(const QList<ExportEntry> &entries, ExportForm form);

// The bytes of a file: text in the encoding of lists; tables and cards as UTF-8, a table with a mark for it where it
// holds more than ASCII, since spreadsheets guess otherwise.
QByteArray ExportBytes(const QList<ExportEntry> &entries, ExportForm form);

// The extension that goes with a form, such as ".csv".
QString ExportExtension(ExportForm form);

// Asks for a file and writes it, whole or not at all; the status line tells. A name without an extension gets that of
// the form, unless such a file is there: what the operator agreed to replace is the name that he typed. False when
// cancelled or on a failure, reported as "Export.cmdExportSave".
bool ExportToFile(Session &session, const QList<ExportEntry> &entries, ExportForm form);

} // namespace varlo
