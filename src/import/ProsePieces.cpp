#include "import/ProsePieces.h"

#include "import/MailHeader.h"

namespace varlo {

bool ProsePieces::Next(Piece &piece) {
    for (QStringView line; lines_.Next(line);) {
        if (!IsFolded(line)) {
            isMachineHeader_ = IsMachineHeader(line, isHeader_);
            isHeader_ = IsHeader(line);
        }
        if (isMachineHeader_ || !line.contains(u'@'))
            continue;
        piece = {line, lines_.Number(), false};
        return true;
    }
    return false;
}

bool LinePieces::Next(Piece &piece) {
    for (QStringView line; lines_.Next(line);) {
        if (line.trimmed().isEmpty())
            continue;
        piece = {line, lines_.Number(), true};
        return true;
    }
    return false;
}

} // namespace varlo
