// Headers that nearly every window needs; here for the speed of the build only.
#pragma once

#include "LogicPch.h"

#include <QtWidgets>
