#include "compose/PlainToolTip.h"

#include "core/Literals.h"

#include <QTextDocument>

namespace varlo {

QString PlainToolTip(const QString &text) {
    if (!Qt::mightBeRichText(text))
        return text;
    return u"<html>"_s + text.toHtmlEscaped().replace(u'\n', u"<br>"_s);
}

} // namespace varlo
