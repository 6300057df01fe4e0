// Errors that stop nothing: kept while what matters goes on, and told when it is done.
#pragma once

#include "core/Reporting.h"

#include <QSet>

#include <vector>

namespace varlo {

class KeptErrors {
public:
    // Runs the statement and keeps its error, with what it was about behind its description.
    template<typename Statement> void operator()(Statement &&statement, const QString &about = {}) {
        try {
            statement();
        } catch (const RuntimeError &error) {
            const QString subject = about.isEmpty() ? QString() : u" ["_s + about.simplified() + u']';
            errors_.emplace_back(error.Number(), error.Description() + subject);
        }
    }

    // A line in "ErrorLog.txt" for each, and a box for the first of each number: five hundred requests that
    // find no room are not five hundred boxes.
    void Tell(Session &session) const {
        QSet<int> told;
        for (const RuntimeError &error : errors_) {
            if (told.contains(error.Number()))
                LogError(session, QString(), error);
            else
                ShowError(session, QString(), error);
            told.insert(error.Number());
        }
    }

private:
    std::vector<RuntimeError> errors_;
};

} // namespace varlo
