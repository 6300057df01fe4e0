#include "compose/PlainToolTip.h"

#include <QTextDocument>

namespace varlo {

QString PlainToolTip(const QString &text) {
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<html>") + text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

} // namespace varlo
