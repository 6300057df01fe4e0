// What the operator can do. Each routine checks at once that it can be done, throwing Refusal, and returns
// the doing: it is run from the event loop, because it may open a box and not return until that is answered.
#pragma once

#include <QJsonObject>
#include <QStringList>

#include <functional>

namespace varlo::e2e {

using Doing = std::function<void()>;

// The arguments of a command; `name` and `window` say which control.
// "button": "right" opens a context menu; "double": true
Doing Click(const QJsonObject &command);
// "row" of a list, "button", "double", "add": true keeps the others
Doing ClickRow(const QJsonObject &command);
Doing TypeText(const QJsonObject &command);    // "text", key by key
Doing EnterText(const QJsonObject &command);   // "text" in one go in place of what is there
Doing PressKeys(const QJsonObject &command);   // "keys" such as "Ctrl+Z"
Doing SelectEntry(const QJsonObject &command); // "text" or "index" of a combo box
Doing DropFiles(const QJsonObject &command);   // "files": full paths
Doing CloseWindow(const QJsonObject &command);
// "name" of a menu entry, in the open pop-up menu or the menu bar
Doing ChooseAction(const QJsonObject &command);
Doing AnswerBox(const QJsonObject &command); // "button": the caption; "input": text for its line first

} // namespace varlo::e2e
