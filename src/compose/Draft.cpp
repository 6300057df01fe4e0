#include "compose/Draft.h"

#include "compose/LineEnds.h"
#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

namespace varlo {

namespace {

const QString kCrLf = u"\r\n"_s;

} // namespace

void SaveDraft(const Session &session, const Draft &draft) {
    WriteFile(ProfileLayout::Draft(session),
              EncodeText(OnOneLine(draft.Subject) + kCrLf + draft.Body + kCrLf));
}

std::optional<Draft> OpenDraft(const Session &session) {
    if (!PathExists(ProfileLayout::Draft(session)))
        return std::nullopt;
    QString text = DecodeText(ReadFile(ProfileLayout::Draft(session)));
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
