// Tooltips whose text comes from files, lists or servers: markup in it is shown as it stands.
#pragma once

#include <QString>

namespace varlo {

// `text` for QWidget::setToolTip: unchanged, unless the tooltip would take it for markup; then it is escaped.
QString PlainToolTip(const QString &text);

// The same for a text that can be longer than the screen is wide: it goes over several lines.
QString LongToolTip(const QString &text);

} // namespace varlo
