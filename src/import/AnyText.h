// The text of a file that may come from any program.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace varlo {

// Bytes as text: UTF-16 with a byte-order mark, or without one where every other byte is zero; UTF-8 with or without
// a mark; else Windows-1252. Nothing when the bytes are no text: a picture, a document, an archive.
std::optional<QString> DecodeAnyText(const QByteArray &bytes);

} // namespace varlo
