// Headers that nearly every test needs; here for the speed of the build only.
#pragma once

#include "support/Printers.h"

#include <QtTest>
#include <QtWidgets>
#include <gtest/gtest.h>

#include <gmock/gmock.h>
