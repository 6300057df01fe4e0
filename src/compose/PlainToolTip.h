// Tooltips whose text comes from files, lists or servers.
#pragma once

#include <QString>

namespace varlo {

// `text` for QWidget::setToolTip: unchanged, unless the tooltip would take it for markup; then it is escaped,
// so that it is shown as it stands.
QString PlainToolTip(const QString &text);

} // namespace varlo
