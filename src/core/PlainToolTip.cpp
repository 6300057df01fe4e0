#include "core/PlainToolTip.h"

#include "core/Literals.h"

#include <QTextDocument>

namespace varlo {

QString PlainToolTip(const QString &text) {
    return Qt::mightBeRichText(text) ? LongToolTip(text) : text;
}

// A tooltip breaks its lines only in what is marked as markup.
QString LongToolTip(const QString &text) {
    return u"<html>"_s + text.toHtmlEscaped().replace(u'\n', u"<br>"_s);
}

} // namespace varlo
