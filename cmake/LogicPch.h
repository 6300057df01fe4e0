// Headers that nearly every file of a room without windows needs; here for the speed of the build only.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>
