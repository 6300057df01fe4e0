#include "compose/Draft.h"

#include "compose/LineEnds.h"
#include "core/Literals.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

namespace varlo {

namespace {

const QString kCrLf = u"\r\n"_s;

QString DraftPath(const Session &session) {
    return session.ProfileFile(u"draft.txt"_s);
}

} // namespace

void SaveDraft(const Session &session, const Draft &draft) {
    WriteFile(DraftPath(session), EncodeText(OnOneLine(draft.Subject) + kCrLf + draft.Body + kCrLf));
}

std::optional<Draft> OpenDraft(const Session &session) {
    if (!PathExists(DraftPath(session)))
        return std::nullopt;
    QString text = DecodeText(ReadFile(DraftPath(session)));
    if (!text.contains(kCrLf))
        text.replace(u'\n', kCrLf);
    QStringList lines = SplitLines(text);
    if (lines.isEmpty())
        return Draft();
    Draft draft;
    draft.Subject = lines.takeFirst();
    draft.Body = lines.join(kCrLf);
    return draft;
}

} // namespace varlo
