// u"text"_s makes a QString without a copy at run time; every file that has texts of its own includes this.
#pragma once

#include <QString>

using namespace Qt::Literals::StringLiterals;
