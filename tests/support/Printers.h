// Shows Qt's texts readably in a failed expectation.
#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

QT_BEGIN_NAMESPACE

inline void PrintTo(const QString &text, std::ostream *out) {
    *out << '"' << text.toUtf8().replace('\r', "\\r").replace('\n', "\\n").constData() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << '"' << QByteArray(bytes).replace('\r', "\\r").replace('\n', "\\n").constData() << '"';
}

QT_END_NAMESPACE
