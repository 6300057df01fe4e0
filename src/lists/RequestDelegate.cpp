#include "lists/RequestDelegate.h"

#include "core/Icons.h"
#include "core/Literals.h"

namespace varlo {

namespace {

constexpr int kDark = 128; // lightness below which a background is dark

} // namespace

RequestDelegate::RequestDelegate(QObject *parent)
    : QStyledItemDelegate(parent), add_(Icon(u"add")), remove_(Icon(u"remove")) {
}

QColor RequestDelegate::ColorOf(const QString &entry, const QColor &background) {
    const bool isDark = background.lightness() < kDark;
    if (entry.startsWith(u'+'))
        return isDark ? QColor(0x7E, 0xE2, 0xA0) : QColor(0x12, 0x69, 0x36);
    if (entry.startsWith(u'-'))
        return isDark ? QColor(0xFF, 0x9E, 0x94) : QColor(0xA6, 0x1B, 0x12);
    return {};
}

void RequestDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QColor color = ColorOf(option->text, option->palette.color(QPalette::Base));
    if (!color.isValid())
        return;
    const int size = option->fontMetrics.height();
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = {size, size};
    option->icon = option->text.startsWith(u'+') ? add_ : remove_;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) // a disabled box stays pale
        option->palette.setColor(group, QPalette::Text, color);
}

} // namespace varlo
