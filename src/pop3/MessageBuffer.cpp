#include "pop3/MessageBuffer.h"

#include "core/TextFile.h"

namespace varlo {

namespace {

constexpr QByteArrayView kEndMark("\n.\r\n");
constexpr QByteArrayView kEmptyLine("\r\n\r\n");

} // namespace

bool MessageBuffer::Append(const QByteArray &chunk) {
    bytes_ += chunk;
    // A mark that is new ends in this chunk, but can begin up to three bytes before it.
    const qsizetype from = qMax<qsizetype>(0, clean_ - (kEndMark.size() - 1));
    searched_ += bytes_.size() - from;
    if (bytes_.indexOf(kEndMark, from) >= 0)
        return true;
    clean_ = bytes_.size();
    return false;
}

void MessageBuffer::Strip() {
    bytes_.remove(0, bytes_.indexOf(kEmptyLine.first(2)) + 2);
    bytes_.chop(3);
    clean_ = 0;
}

QString MessageBuffer::Head() const {
    const qsizetype emptyLine = bytes_.indexOf(kEmptyLine);
    return emptyLine < 0 ? QString() : DecodeText(bytes_.first(emptyLine + kEmptyLine.size()));
}

void MessageBuffer::Clear() {
    *this = MessageBuffer();
}

} // namespace varlo
