#include "compose/Unsent.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <array>
#include <utility>

namespace varlo {

namespace {

const QString kHeader = u"[Message]"_s;

// How the file names the sources that a message can come back to.
const std::array kSources = std::to_array<std::pair<RecipientSource, QString>>({
    {RecipientSource::OneList, u"list"_s},
    {RecipientSource::AllLists, u"all"_s},
    {RecipientSource::SelectLists, u"lists"_s},
    {RecipientSource::CurrentSelection, u"selection"_s},
    {RecipientSource::Separator, u"none"_s},
});

QString NameOf(RecipientSource source) {
    for (const auto &[known, name] : kSources)
        if (known == source)
            return name;
    return {};
}

RecipientSource SourceNamed(const QString &name) {
    for (const auto &[source, known] : kSources)
        if (known == name)
            return source;
    return RecipientSource::Separator;
}

// A value stands on one line, whatever it holds: names of files, too, can have line breaks.
QString Escaped(QString value) {
    return value.replace(u'\\', u"\\\\"_s).replace(u'\r', u"\\r"_s).replace(u'\n', u"\\n"_s);
}

QChar Meant(QChar escaped) {
    return escaped == u'n' ? u'\n' : escaped == u'r' ? u'\r' : escaped;
}

QString Unescaped(QStringView value) {
    QString text;
    text.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        text += isEscape ? Meant(value[++i]) : value[i];
    }
    return text;
}

void Add(QString &text, const QString &key, const QStringList &values) {
    for (const QString &value : values)
        text += key + u'=' + Escaped(value) + u"\r\n"_s;
}

void Take(UnsentMessage &message, QStringList &body, QStringView key, const QString &value) {
    if (key == u"Subject")
        message.Subject = value;
    else if (key == u"To")
        message.ToName = value;
    else if (key == u"Recipients")
        message.Source = SourceNamed(value);
    else if (key == u"List")
        message.Lists << value;
    else if (key == u"Attachment")
        message.Attachments << value;
    else if (key == u"Text")
        body << value;
}

} // namespace

bool HasOwnWords(const UnsentMessage &message, const QString &signature) {
    const QString text = message.Text.trimmed();
    return !message.Subject.trimmed().isEmpty() || (!text.isEmpty() && text != signature.trimmed());
}

QString UnsentToText(const std::vector<UnsentMessage> &messages) {
    QString text;
    for (const UnsentMessage &message : messages) {
        text += kHeader + u"\r\n"_s;
        Add(text, u"Subject"_s, {message.Subject});
        Add(text, u"To"_s, {message.ToName});
        Add(text, u"Recipients"_s, {NameOf(message.Source)});
        Add(text, u"List"_s, message.Lists);
        Add(text, u"Attachment"_s, message.Attachments);
        Add(text, u"Text"_s, message.Text.split(u"\r\n"_s));
    }
    return text;
}

std::vector<UnsentMessage> UnsentFromText(const QString &text) {
    std::vector<UnsentMessage> messages;
    QStringList body;
    const auto close = [&] {
        if (!messages.empty())
            messages.back().Text = body.join(u"\r\n"_s);
        body.clear();
    };
    for (const QString &line : SplitLines(text)) {
        if (line == kHeader) {
            close();
            messages.emplace_back();
        } else if (const qsizetype equals = line.indexOf(u'='); equals > 0 && !messages.empty()) {
            const QStringView all(line);
            Take(messages.back(), body, all.first(equals), Unescaped(all.sliced(equals + 1)));
        }
    }
    close();
    return messages;
}

void UnsentFile::Load() {
    const QString path = ProfileLayout::Unsent(session_);
    if (PathExists(path))
        earlier_ = UnsentFromText(DecodeText(ReadFile(path)));
    isLoaded_ = true;
}

void UnsentFile::Keep(const std::optional<UnsentMessage> &message) {
    if (message == own_)
        return;
    if (!isLoaded_)
        Load(); // what could not be read before is not written over
    Become(earlier_, message);
}

UnsentMessage UnsentFile::TakeUp(const std::optional<UnsentMessage> &instead) {
    std::vector<UnsentMessage> earlier = earlier_;
    UnsentMessage offered = std::move(earlier.back());
    earlier.pop_back();
    if (instead)
        earlier.insert(earlier.begin(), *instead);
    Become(std::move(earlier), std::nullopt);
    return offered;
}

void UnsentFile::Discard() {
    std::vector<UnsentMessage> earlier = earlier_;
    earlier.pop_back();
    Become(std::move(earlier), own_);
}

void UnsentFile::Become(std::vector<UnsentMessage> earlier, std::optional<UnsentMessage> own) {
    std::vector<UnsentMessage> all = earlier;
    if (own)
        all.push_back(*own);
    const QString path = ProfileLayout::Unsent(session_);
    // UTF-8 on every system: nothing of a text is lost to a code page.
    if (!all.empty())
        WriteFile(path, UnsentToText(all).toUtf8(), FileAccess::OwnerOnly);
    else if (PathExists(path))
        DeleteFile(path);
    earlier_ = std::move(earlier);
    own_ = std::move(own);
}

} // namespace varlo
